#include "Conformance/EngineArguments.h"

namespace Conformance {

using namespace UsageEngine;
using namespace UsageModel;
using nlohmann::json;

namespace {

/// A row is `[ts, sessionId, model, input, output, cacheCreation, cacheRead, effort or null]`.
UsageEvent eventOf(const json& row) {
    const std::string model = row.at(2);
    const json& effort = row.at(7);
    return {
        .ts = Date{row.at(0)},
        .sessionId = row.at(1).get<std::string>(),
        .model = model,
        .modelClass = modelClass(model),
        .input = row.at(3),
        .output = row.at(4),
        .cacheCreation = row.at(5),
        .cacheRead = row.at(6),
        .effort = effort.is_null() ? std::nullopt : fromText<EffortLevel>(effort.get<std::string>()),
    };
}

Calendar calendarNamed(const std::string& zone) {
    const auto calendar = Calendar::inZone(zone);
    if (!calendar) throw UsageModel::Json::Error("no zone " + zone);
    return *calendar;
}

} // namespace

std::vector<UsageEvent> events(const Arguments& args) {
    std::vector<UsageEvent> events;
    for (const json& row : args.raw("events")) events.push_back(eventOf(row));
    return events;
}

std::vector<WeighedTurn> turns(const Arguments& args) {
    return weigh(events(args), args.get<CategoryWeights>("weights"));
}

Calendar calendar(const Arguments& args) {
    return calendarNamed(args.get<std::string>("timeZone"));
}

Baseline baseline(const Arguments& args) {
    const json& form = args.raw("baseline");
    return {form.at("week").get<std::vector<double>>(), calendarNamed(form.at("timeZone"))};
}

TimeSpan span(const Arguments& args, const char* from, const char* to) {
    return {.from = args.get<Date>(from), .to = args.get<Date>(to)};
}

TurnFilter filter(const Arguments& args) {
    return {.opusOnly = args.find<bool>("opusOnly").value_or(false), .bucket = args.find<ModelBucket>("bucket")};
}

} // namespace Conformance
