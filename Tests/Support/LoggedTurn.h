#pragma once

#include <array>
#include <ctime>
#include <string>

#include "UsageModel/Date.h"

namespace TestSupport {

/// A turn as a session log has it, with its line feed; no two of different numbers are the same. Whole seconds count.
inline std::string loggedTurn(UsageModel::Date at, long number, const std::string& model = "claude-opus-4-5") {
    const auto seconds = static_cast<std::time_t>(at.secondsSince1970);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 32> stamp{};
    std::strftime(stamp.data(), stamp.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    const std::string id = std::to_string(number);
    return R"({"type":"assistant","timestamp":")" + std::string(stamp.data()) +
           R"(.000Z","sessionId":"s","requestId":"r)" + id + R"(","message":{"id":"m)" + id + R"(","model":")" + model +
           R"(","usage":{"input_tokens":100,"output_tokens":)" + std::to_string(500 + number % 1000) + "}}}\n";
}

} // namespace TestSupport
