#include "Conformance/EngineArguments.h"
#include "UsageEngine/BottomUpForecast.h"
#include "UsageEngine/CompositeForecast.h"
#include "UsageEngine/ForecastShape.h"

namespace Conformance {

namespace {

using namespace UsageEngine;
using namespace UsageModel;
using nlohmann::json;

ForecastShape::Standing standing(const Arguments& args) {
    return {.usedNow = args.get<double>("usedNow"), .sNow = args.get<double>("sNow"), .k = args.find<double>("k")};
}

void addShapes(Operations& to) {
    to["ForecastShape.make"] = [](const Arguments& args) {
        const Baseline learnt = baseline(args);
        const auto norm = args.get<WeeklyNorm>("norm");
        return result(ForecastShape::make({.baseline = learnt,
                                           .norm = norm,
                                           .scale = args.get<double>("scale"),
                                           .window = span(args, "windowStart", "windowEnd"),
                                           .now = args.get<Date>("now"),
                                           .usedNow = args.get<double>("usedNow"),
                                           .actualCumulative = args.find<std::vector<SeriesPoint>>("actualCumulative"),
                                           .recencyHalfLife = args.find<double>("recencyHalfLife"),
                                           .shrinkage = args.get<double>("shrinkage")}));
    };
    to["ForecastShape.share"] = [](const Arguments& args) {
        return result(args.get<ForecastShape>("shape").share(args.get<Date>("at")));
    };
    to["ForecastShape.projected"] = [](const Arguments& args) {
        return result(args.get<ForecastShape>("shape").projected(standing(args), args.get<Date>("at")));
    };
    to["ForecastShape.crossing"] = [](const Arguments& args) {
        return result(args.get<ForecastShape>("shape").crossing(
            standing(args), {.level = args.get<double>("level"), .after = args.get<Date>("after")}));
    };
}

void addBottomUp(Operations& to) {
    to["BottomUpForecast.make"] = [](const Arguments& args) {
        const auto profile = args.get<WeekdayProfile>("profile");
        const Calendar zone = calendar(args);
        return result(BottomUpForecast::make({.profile = profile,
                                              .usedNow = args.get<double>("usedNow"),
                                              .window = span(args, "windowStart", "windowEnd"),
                                              .now = args.get<Date>("now"),
                                              .calendar = zone,
                                              .recencyWeight = args.get<double>("recencyWeight"),
                                              .sessionCapCost = args.find<double>("sessionCapCost")}));
    };
    to["BottomUpForecast.projected"] = [](const Arguments& args) {
        return result(
            args.get<BottomUpForecast>("forecast").projected(args.get<Date>("at"), args.get<double>("kFactor")));
    };
    to["BottomUpForecast.crossing"] = [](const Arguments& args) {
        return result(args.get<BottomUpForecast>("forecast")
                          .crossing({.level = args.get<double>("level"),
                                     .after = args.get<Date>("after"),
                                     .kFactor = args.get<double>("kFactor")}));
    };
    to["BottomUpForecast.value"] = [](const Arguments& args) {
        return result(BottomUpForecast::value(args.get<std::vector<SeriesPoint>>("in"), args.get<Date>("at"),
                                              args.get<double>("fallback")));
    };
}

std::optional<CompositeForecast> composite(const Arguments& args) {
    const auto all = turns(args);
    const Calendar zone = calendar(args);
    return CompositeForecast::make({.turns = all,
                                    .calendar = zone,
                                    .window = span(args, "windowStart", "windowEnd"),
                                    .now = args.get<Date>("now"),
                                    .scale = args.get<double>("scale"),
                                    .earliestEvent = args.find<Date>("earliestEvent"),
                                    .recencyHalfLife = args.find<double>("recencyHalfLife"),
                                    .shrinkage = args.get<double>("shrinkage")});
}

CompositeForecast::Course course(const Arguments& args) {
    return {.edge = args.get<CompositeForecast::Edge>("edge"), .kFactor = args.get<double>("kFactor")};
}

void addComposite(Operations& to) {
    to["CompositeForecast.make"] = [](const Arguments& args) { return result(composite(args)); };
    to["CompositeForecast.projected"] = [](const Arguments& args) {
        const auto forecast = composite(args);
        return forecast ? result(forecast->projected(args.get<Date>("at"), course(args))) : json();
    };
    to["CompositeForecast.crossing"] = [](const Arguments& args) {
        const auto forecast = composite(args);
        if (!forecast) return json();
        return result(
            forecast->crossing({.level = args.get<double>("level"), .after = args.get<Date>("after")}, course(args)));
    };
}

} // namespace

void addForecastOperations(Operations& operations) {
    addShapes(operations);
    addBottomUp(operations);
    addComposite(operations);
}

} // namespace Conformance
