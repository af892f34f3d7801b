#pragma once

#include <optional>
#include <string_view>

#include "UsageModel/Date.h"
#include "UsageModel/WindowKind.h"

namespace UsageIngest {

/// What Claude Code says where the service refused a turn, such as
/// "You've hit your session limit · resets 3pm (Europe/Berlin)".
struct LimitMessage {
    UsageModel::WindowKind window = UsageModel::WindowKind::session5h;
    /// The next time, after the line, that the clock in the named zone shows the named time: the message has no date.
    /// Absent where the zone is unknown or the time is none.
    std::optional<UsageModel::Date> resetsAt;

    friend bool operator==(const LimitMessage&, const LimitMessage&) = default;
};

/// Recognises a limit message anywhere in `text`, logged at `ts`. Absent where there is none, where the text is not
/// UTF-8, and where the search in a contrived text exceeds the matcher's bounds.
[[nodiscard]] std::optional<LimitMessage> readLimitMessage(std::string_view text, UsageModel::Date ts);

} // namespace UsageIngest
