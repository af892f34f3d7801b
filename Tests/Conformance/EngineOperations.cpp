#include "Conformance/EngineArguments.h"

#include "UsageEngine/Aggregator.h"
#include "UsageEngine/Backtest.h"
#include "UsageEngine/Baseline.h"
#include "UsageEngine/BindingResolver.h"
#include "UsageEngine/BottomUpForecast.h"
#include "UsageEngine/BurnRate.h"
#include "UsageEngine/CompositeForecast.h"
#include "UsageEngine/DayGrid.h"
#include "UsageEngine/ForecastShape.h"
#include "UsageEngine/LiveModelReading.h"
#include "UsageEngine/ProjectionEngine.h"
#include "UsageEngine/Remedy.h"
#include "UsageEngine/Rollups.h"
#include "UsageEngine/SessionCapScale.h"
#include "UsageEngine/SessionWindows.h"
#include "UsageEngine/TimeText.h"
#include "UsageEngine/WeekdayProfile.h"
#include "UsageEngine/WeeklyNormLearning.h"
#include "UsageEngine/WindowComputation.h"

namespace Conformance {

namespace {

using namespace UsageEngine;
using namespace UsageModel;
using nlohmann::json;

json effortForm(const EffortMix& mix) {
    json form{{"mix", result(mix.mix)}};
    if (mix.dominant) form["dominant"] = text(*mix.dominant);
    return form;
}

json rollupForm(const Rollup& rollup) {
    json form{{"kind", text(rollup.kind)},
              {"used", rollup.used},
              {"windowStart", result(rollup.windowStart)},
              {"windowEnd", result(rollup.windowEnd)}};
    if (rollup.resetsAt) form["resetsAt"] = result(*rollup.resetsAt);
    return form;
}

void addRollups(Operations& to) {
    to["SessionWindows.reconstruct"] = [](const Arguments& args) {
        return result(SessionWindows::reconstruct(turns(args), args.get<Date>("now")));
    };
    to["Rollups.weightedUsage"] = [](const Arguments& args) {
        return result(Rollups::weightedUsage(turns(args), span(args, "from", "to"), filter(args)));
    };
    to["Rollups.hourlyCumulative"] = [](const Arguments& args) {
        const auto all = turns(args);
        return result(Rollups::hourlyCumulative({.turns = all,
                                                 .span = span(args, "from", "to"),
                                                 .scale = args.get<double>("scale"),
                                                 .bucket = args.find<ModelBucket>("bucket")}));
    };
    to["Rollups.byModelClass"] = [](const Arguments& args) {
        return result(Rollups::byModelClass(turns(args), span(args, "from", "to")));
    };
    to["Rollups.byEffort"] = [](const Arguments& args) {
        return effortForm(Rollups::byEffort(turns(args), span(args, "from", "to")));
    };
    to["Rollups.dailyCalendar"] = [](const Arguments& args) {
        return result(Rollups::dailyCalendar(turns(args), calendar(args)));
    };
    to["Rollups.trailingWeekly"] = [](const Arguments& args) {
        const auto all = turns(args);
        return rollupForm(Rollups::trailingWeekly({.turns = all,
                                                   .now = args.get<Date>("now"),
                                                   .kind = args.get<WindowKind>("kind"),
                                                   .resetsAt = args.find<Date>("resetsAt")}));
    };
}

void addLearning(Operations& to) {
    to["Baseline.learn"] = [](const Arguments& args) {
        const auto all = turns(args);
        const Calendar zone = calendar(args);
        return result(Baseline::learn({.turns = all,
                                       .calendar = zone,
                                       .from = args.find<Date>("from"),
                                       .to = args.find<Date>("to"),
                                       .filter = filter(args)})
                          .week());
    };
    to["Baseline.rate"] = [](const Arguments& args) {
        return result(baseline(args).rate(args.get<Date>("at"), args.get<WindowKind>("window")));
    };
    to["Baseline.expectedElapsedShare"] = [](const Arguments& args) {
        return result(
            baseline(args).expectedElapsedShare(span(args, "windowStart", "now"), args.get<WindowKind>("window")));
    };
    to["Baseline.cumulativeShareCurve"] = [](const Arguments& args) {
        return result(
            baseline(args).cumulativeShareCurve(span(args, "windowStart", "windowEnd"), args.get<double>("step")));
    };
    to["BurnRate.recent"] = [](const Arguments& args) {
        const auto all = turns(args);
        return result(BurnRate::recent(
            {.turns = all, .now = args.get<Date>("now"), .windowSeconds = args.get<double>("windowSeconds")}));
    };
    to["WeeklyNorm.learn"] = [](const Arguments& args) {
        const auto all = turns(args);
        return result(learnWeeklyNorm({.turns = all,
                                       .windowStart = args.get<Date>("windowStart"),
                                       .span = args.get<double>("span"),
                                       .now = args.get<Date>("now"),
                                       .lookback = static_cast<int>(args.get<std::int64_t>("lookback")),
                                       .filter = filter(args),
                                       .earliestEvent = args.find<Date>("earliestEvent")}));
    };
}

void addWeekdays(Operations& to) {
    to["WeekdayProfile.learn"] = [](const Arguments& args) {
        const auto all = turns(args);
        const Calendar zone = calendar(args);
        return result(WeekdayProfile::learn({.turns = all,
                                             .calendar = zone,
                                             .through = args.get<Date>("through"),
                                             .lookbackWeeks = static_cast<int>(args.get<std::int64_t>("lookbackWeeks")),
                                             .scale = args.get<double>("scale")}));
    };
    to["WeekdayProfile.expectedBurn"] = [](const Arguments& args) {
        const Calendar zone = calendar(args);
        return result(args.get<WeekdayProfile>("profile").expectedBurn(
            {.span = span(args, "from", "to"),
             .quantile = args.get<WeekdayProfile::Quantile>("quantile"),
             .calendar = zone}));
    };
    to["WeekdayProfile.cumulative"] = [](const Arguments& args) {
        const Calendar zone = calendar(args);
        return result(
            args.get<WeekdayProfile>("profile").cumulative({.span = span(args, "from", "to"),
                                                            .quantile = args.get<WeekdayProfile::Quantile>("quantile"),
                                                            .calendar = zone}));
    };
    to["DayGrid.columns"] = [](const Arguments& args) {
        return result(DayGrid::columns(span(args, "windowStart", "windowEnd"), calendar(args)));
    };
}

template <typename Record>
const Record* orNull(const std::optional<Record>& record) {
    return record ? &*record : nullptr;
}

BindingResolver::Input inputOf(const json& form) {
    return {.state = UsageModel::Json::decode<WindowState>(form.at("state")),
            .projection = UsageModel::Json::decode<Projection>(form.at("projection"))};
}

std::vector<BindingResolver::Input> inputs(const Arguments& args) {
    std::vector<BindingResolver::Input> inputs;
    for (const json& form : args.raw("inputs")) inputs.push_back(inputOf(form));
    return inputs;
}

void addVerdicts(Operations& to) {
    to["ProjectionEngine.project"] = [](const Arguments& args) {
        const auto shape = args.find<ForecastShape>("shape");
        const auto bottomUp = args.find<BottomUpForecast>("bottomUp");
        return result(ProjectionEngine::project({.window = args.get<WindowKind>("window"),
                                                 .used = args.get<double>("used"),
                                                 .now = args.get<Date>("now"),
                                                 .resetsAt = args.find<Date>("resetsAt"),
                                                 .recentRate = args.get<double>("recentRate"),
                                                 .baselineRate = args.get<double>("baselineRate"),
                                                 .fastRate = args.get<double>("fastRate"),
                                                 .bottomUp = orNull(bottomUp),
                                                 .shape = orNull(shape),
                                                 .shareNow = args.get<double>("shareNow"),
                                                 .elapsedFraction = args.get<double>("elapsedFraction")}));
    };
    to["BindingResolver.resolve"] = [](const Arguments& args) {
        return result(BindingResolver::resolve(inputs(args)));
    };
    to["BindingResolver.verdict"] = [](const Arguments& args) {
        return result(BindingResolver::verdict(args.get<WindowKind>("binding"), inputs(args), args.get<Date>("now")));
    };
}

json evidenceForm(const SessionCapScale::Evidence& evidence) {
    json form{{"case", text(evidence.kind)}};
    if (evidence.kind == SessionCapScale::Evidence::Case::ceilings) form["count"] = evidence.count;
    return form;
}

void addSessionCap(Operations& to) {
    to["SessionCapScale.learn"] = [](const Arguments& args) {
        const auto all = turns(args);
        const auto blocks = args.get<std::vector<SessionBlock>>("blocks");
        const auto anchors = args.get<std::vector<Anchor>>("anchors");
        const auto gauge = args.find<GaugeReading>("gauge");
        const auto learnt = SessionCapScale::learn({.blocks = blocks,
                                                    .anchors = anchors,
                                                    .turns = all,
                                                    .gauge = orNull(gauge),
                                                    .sessionWindowStart = args.find<Date>("sessionWindowStart"),
                                                    .now = args.get<Date>("now"),
                                                    .held = args.find<double>("held")});
        json form{{"evidence", evidenceForm(learnt.evidence)}};
        if (learnt.capInLogUnits) form["capInLogUnits"] = *learnt.capInLogUnits;
        return form;
    };
}

json outcomeForm(const Remedy::Outcome& outcome) {
    json form{{"case", text(outcome.kind)}};
    if (outcome.kind == Remedy::Outcome::Case::pause) form["seconds"] = outcome.seconds;
    if (outcome.option) {
        form["option"] = result(*outcome.option);
        form["effortAloneWasEnough"] = outcome.effortAloneWasEnough;
    }
    return form;
}

void addRemedy(Operations& to) {
    to["Remedy.search"] = [](const Arguments& args) {
        const auto space = args.get<WhatIfSpace>("space");
        return outcomeForm(Remedy::search({.space = space,
                                           .used = args.get<double>("used"),
                                           .endFraction = args.get<double>("endFraction"),
                                           .limit = args.get<double>("limit"),
                                           .remaining = args.get<double>("remaining")}));
    };
    to["Remedy.upgrade"] = [](const Arguments& args) {
        return result(Remedy::upgrade(args.get<std::vector<Remedy::Room>>("rooms"), args.find<ModelClass>("from"),
                                      args.find<EffortLevel>("effort")));
    };
    to["Remedy.dominantTier"] = [](const Arguments& args) {
        return result(Remedy::dominantTier(args.get<WhatIfSpace>("space")));
    };
}

json boundsForm(const WindowBounds& bounds) {
    json form{{"start", result(bounds.start)}, {"estimated", bounds.estimated}};
    if (bounds.resetsAt) form["resetsAt"] = result(*bounds.resetsAt);
    return form;
}

void addAggregator(Operations& to) {
    to["LiveModel.read"] = [](const Arguments& args) {
        const auto rows = events(args);
        const auto weights = args.get<CategoryWeights>("weights");
        const auto all = weigh(rows, weights);
        return result(readLiveModel({.events = rows,
                                     .turns = all,
                                     .weights = weights,
                                     .now = args.get<Date>("now"),
                                     .lookback = args.get<double>("lookback")}));
    };
    to["Aggregator.windowBounds"] = [](const Arguments& args) {
        const auto gauge = args.find<GaugeReading>("gauge");
        const auto anchors = args.get<std::vector<Anchor>>("anchors");
        return boundsForm(windowBounds({.kind = args.get<WindowKind>("kind"),
                                        .gauge = orNull(gauge),
                                        .now = args.get<Date>("now"),
                                        .anchors = anchors}));
    };
    to["Aggregator.snapshot"] = [](const Arguments& args) {
        const auto rows = events(args);
        const auto anchors = args.get<std::vector<Anchor>>("anchors");
        const Aggregator aggregator{.weights = args.get<CategoryWeights>("weights"), .calendar = calendar(args)};
        return result(aggregator.snapshot({.events = rows,
                                           .anchors = anchors,
                                           .gauge = args.find<GaugeReading>("gauge"),
                                           .now = args.get<Date>("now"),
                                           .ingest = args.get<IngestProgress>("ingest"),
                                           .heldSessionCap = args.find<double>("heldSessionCap")}));
    };
    to["Backtest.evaluate"] = [](const Arguments& args) {
        const auto all = turns(args);
        const Calendar zone = calendar(args);
        const auto samples = args.get<std::vector<Date>>("sampleTimes");
        return result(Backtest::evaluate({.turns = all,
                                          .calendar = zone,
                                          .week = span(args, "completedWeekStart", "completedWeekEnd"),
                                          .sampleTimes = samples,
                                          .recencyHalfLife = args.find<double>("recencyHalfLife"),
                                          .shrinkage = args.get<double>("shrinkage"),
                                          .scale = args.get<double>("scale"),
                                          .bottomUp = args.get<bool>("bottomUp"),
                                          .bottomUpWeight = args.get<double>("bottomUpWeight"),
                                          .useComposite = args.get<bool>("useComposite")}));
    };
}

void addTexts(Operations& to) {
    to["TimeText.duration"] = [](const Arguments& args) { return TimeText::duration(args.get<double>("seconds")); };
    to["TimeText.until"] = [](const Arguments& args) {
        return TimeText::until(args.get<Date>("now"), args.find<Date>("date"));
    };
    to["TimeText.shortStamp"] = [](const Arguments& args) {
        return TimeText::shortStamp(args.get<Date>("date"), calendar(args));
    };
    to["TimeText.dayAndTime"] = [](const Arguments& args) {
        return TimeText::dayAndTime(args.get<Date>("date"), calendar(args));
    };
    to["TimeText.clock"] = [](const Arguments& args) {
        return TimeText::clock(args.get<Date>("date"), calendar(args));
    };
}

} // namespace

void addEngineOperations(Operations& operations) {
    addRollups(operations);
    addLearning(operations);
    addWeekdays(operations);
    addVerdicts(operations);
    addSessionCap(operations);
    addRemedy(operations);
    addAggregator(operations);
    addTexts(operations);
}

} // namespace Conformance
