#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <variant>

#include "UsageModel/Anchor.h"
#include "UsageModel/UsageEvent.h"

namespace UsageIngest {

/// A line that holds nothing for us.
struct Ignored {
    friend bool operator==(const Ignored&, const Ignored&) = default;
};

/// What a line of a session log holds: a billed turn, a limit that was hit, or nothing.
using ParsedLine = std::variant<Ignored, UsageModel::UsageEvent, UsageModel::Anchor>;

/// Reads lines of session logs; the only place that knows their format. What a line gives depends on that line alone:
/// the parser keeps nothing between two lines but buffers. For one thread at a time.
class LogLineParser {
public:
    LogLineParser();
    LogLineParser(LogLineParser&&) noexcept;
    LogLineParser& operator=(LogLineParser&&) noexcept;
    ~LogLineParser();

    /// `line` is one line without its line feed, as raw bytes. Whatever is not one whole JSON object with members of
    /// the right types, or nested more than a thousand deep, is ignored, as are turns of no tokens. Never throws but
    /// for want of memory.
    [[nodiscard]] ParsedLine parse(std::string_view line);

    /// The limit that a message text says was hit, as logged at `timestamp`. Absent where either is absent, the
    /// timestamp cannot be read, or the text is no limit message.
    [[nodiscard]] static std::optional<UsageModel::Anchor> anchor(std::optional<std::string_view> text,
                                                                  std::optional<std::string_view> timestamp);

private:
    class Decoder;
    std::unique_ptr<Decoder> decoder_;
};

} // namespace UsageIngest
