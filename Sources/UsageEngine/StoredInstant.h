#pragma once

#include "UsageModel/Json.h"

namespace UsageEngine {

/// An instant in the stored state of the alerts. It is written as seconds since 2001-01-01 00:00:00 UTC, unlike all
/// other instants, because that is what state files have always held. Reads as a `Date` everywhere else.
struct StoredInstant {
    UsageModel::Date date;

    operator UsageModel::Date() const { return date; }

    friend bool operator==(const StoredInstant&, const StoredInstant&) = default;
};

} // namespace UsageEngine

template <>
struct UsageModel::Json::detail::Form<UsageEngine::StoredInstant> {
    static constexpr Date epoch{978307200};

    /// Throws `Error` for what is no instant: it would be written as null, and the file would be lost with it.
    static nlohmann::json encode(const UsageEngine::StoredInstant& value) {
        const double seconds = value.date - epoch;
        require(std::isfinite(seconds), "not a finite instant");
        return seconds;
    }
    static UsageEngine::StoredInstant decode(const nlohmann::json& json) {
        return {epoch + Form<double>::decode(json)};
    }
};
