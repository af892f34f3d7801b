#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "UsageModel/Json.h"

/// Single operations of the program, asked for by name with arguments as JSON, so that another implementation's
/// answers can be compared with ours.
namespace Conformance {

/// The arguments of one request, by name. Reading throws `UsageModel::Json::Error`, which names the argument.
class Arguments {
public:
    /// Refers to `json`, which must be an object and outlive this.
    explicit Arguments(const nlohmann::json& json) : json_(json) {}

    template <typename T>
    [[nodiscard]] T get(const char* name) const {
        const auto found = json_.find(name);
        if (found == json_.end()) throw UsageModel::Json::Error(std::string("no argument ") + name);
        return decoded<T>(name, *found);
    }

    /// Absent where the argument is left out or null.
    template <typename T>
    [[nodiscard]] std::optional<T> find(const char* name) const {
        const auto found = json_.find(name);
        if (found == json_.end() || found->is_null()) return std::nullopt;
        return decoded<T>(name, *found);
    }

    /// The argument as it stands.
    [[nodiscard]] const nlohmann::json& raw(const char* name) const {
        const auto found = json_.find(name);
        if (found == json_.end()) throw UsageModel::Json::Error(std::string("no argument ") + name);
        return *found;
    }

private:
    template <typename T>
    static T decoded(const char* name, const nlohmann::json& json) {
        try {
            return UsageModel::Json::decode<T>(json);
        } catch (const UsageModel::Json::Error& error) {
            throw UsageModel::Json::Error(std::string(name) + ": " + error.what());
        }
    }

    const nlohmann::json& json_;
};

using Operation = std::function<nlohmann::json(const Arguments&)>;
using Operations = std::map<std::string, Operation, std::less<>>;

/// The operations on the shared records.
void addRecordOperations(Operations& operations);
/// The operations on the lines of session logs.
void addLineOperations(Operations& operations);
/// The operations of the engine, but for the forecasts.
void addEngineOperations(Operations& operations);
/// The shapes of a week, and what they make of a running one.
void addForecastOperations(Operations& operations);
/// The operations on what users read.
void addCopyOperations(Operations& operations);
/// The alert machines, run over several steps.
void addAlertOperations(Operations& operations);

[[nodiscard]] Operations allOperations();

/// A result's JSON form; null for an absent one.
template <typename T>
[[nodiscard]] nlohmann::json result(const T& value) {
    return UsageModel::Json::encode(value);
}

template <typename T>
[[nodiscard]] nlohmann::json result(const std::optional<T>& value) {
    return value ? UsageModel::Json::encode(*value) : nlohmann::json();
}

} // namespace Conformance
