// Any bytes as a line: what comes out is a turn of at least one token, a ceiling, or nothing; it does not depend on
// what the parser read before; and a second reader agrees that an accepted line is JSON.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <nlohmann/json.hpp>

#include "FuzzCheck.h"
#include "UsageIngest/LogLineParser.h"

using UsageIngest::Ignored;
using UsageIngest::LogLineParser;
using UsageIngest::ParsedLine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    static LogLineParser used;
    const ParsedLine parsed = used.parse(line);
    fuzzCheck(parsed == LogLineParser().parse(line), "a fresh parser gives the same");
    if (std::holds_alternative<Ignored>(parsed)) return 0;

    if (const auto* event = std::get_if<UsageModel::UsageEvent>(&parsed)) {
        fuzzCheck(UsageModel::rawTokens(*event) >= 1, "a turn has tokens");
        fuzzCheck(event->modelClass == UsageModel::modelClass(event->model.view()), "the class follows the model");
    } else {
        const auto& anchor = std::get<UsageModel::Anchor>(parsed);
        fuzzCheck(anchor.kind == UsageModel::AnchorKind::ceiling && anchor.usedFraction == 1.0, "a limit is a ceiling");
    }
    const auto onlyCheckSyntax = [](int, nlohmann::json::parse_event_t, const nlohmann::json&) { return false; };
    // The second reader refuses numbers that no double holds; those lines are left to the first.
    try {
        static_cast<void>(nlohmann::json::parse(line, onlyCheckSyntax));
    } catch (const nlohmann::json::out_of_range&) {
    } catch (const nlohmann::json::parse_error&) {
        fuzzCheck(false, "an accepted line is JSON");
    }
    return 0;
}
