#include "Conformance/Operations.h"

#include "UsageModel/AppPaths.h"
#include "UsageModel/CategoryWeights.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/StatusLineInput.h"
#include "UsageModel/UsageSnapshot.h"

namespace Conformance {

namespace {

using namespace UsageModel;
using nlohmann::json;

ModelAndEffort change(const Arguments& args) {
    return {.model = args.find<ModelClass>("model"), .effort = args.find<EffortLevel>("effort")};
}

WhatIfSpace space(const Arguments& args) {
    return args.get<WhatIfSpace>("space");
}

LiveModel live(const Arguments& args) {
    return args.get<LiveModel>("live");
}

WeekSeries series(const Arguments& args) {
    return args.get<WeekSeries>("series");
}

json bucketList(const Arguments& args) {
    json list = json::array();
    for (const auto& [bucket, sum] : bucketed(args.get<EnumMap<ModelClass, double>>("byClass"))) {
        list.push_back(json::array({text(bucket), sum}));
    }
    return list;
}

json readoutForm(const SessionCapReadout& readout) {
    using Case = SessionCapReadout::Case;
    json form = {{"case", text(readout.kind)}};
    if (readout.kind == Case::measured || readout.kind == Case::estimated) form["value"] = readout.value;
    return form;
}

json gaugeReadingOfStatusLine(const Arguments& args) {
    const auto capturedAt = args.get<double>("capturedAt");
    const auto source = args.get<std::string>("source");
    const auto input = StatusLineInput::decode(args.get<std::string>("text"));
    return input ? result(input->gaugeReading(capturedAt, source)) : json();
}

void addWeighting(Operations& to) {
    to["CategoryWeights.effective"] = [](const Arguments& args) {
        return result(args.get<CategoryWeights>("weights").effective(args.get<UsageEvent>("event")));
    };
    to["CategoryWeights.priors"] = [](const Arguments& args) {
        return result(CategoryWeights::priors(args.get<double>("scale")));
    };
    to["ModelClass.init"] = [](const Arguments& args) { return result(modelClass(args.get<std::string>("rawModel"))); };
    to["ModelClass.bucketed"] = bucketList;
    to["ModelBreakdown.fraction"] = [](const Arguments& args) {
        return result(args.get<ModelBreakdown>("models").fraction(args.get<ModelClass>("class")));
    };
}

void addGauge(Operations& to) {
    to["GaugeReading.decode"] = [](const Arguments& args) {
        return result(GaugeReading::decode(args.get<std::string>("text")));
    };
    to["GaugeReading.anchors"] = [](const Arguments& args) {
        return result(args.get<GaugeReading>("reading").anchors());
    };
    to["StatusLineInput.gaugeReading"] = gaugeReadingOfStatusLine;
    to["AppPaths.isOurShim"] = [](const Arguments& args) {
        return result(AppPaths::isOurShim(args.find<std::string>("command")));
    };
    to["IngestProgress.fraction"] = [](const Arguments& args) {
        return result(args.get<IngestProgress>("progress").fraction());
    };
}

void addWeekSeries(Operations& to) {
    to["SessionBar.capReadout"] = [](const Arguments& args) {
        return readoutForm(args.get<SessionBar>("bar").capReadout());
    };
    to["WeekSeries.x"] = [](const Arguments& args) { return result(series(args).x(args.get<Date>("date"))); };
    to["WeekSeries.ghost"] = [](const Arguments& args) {
        return result(series(args).ghost(args.get<double>("factor")));
    };
    to["WeekSeries.ghostLanding"] = [](const Arguments& args) {
        return result(series(args).ghostLanding(args.get<double>("factor")));
    };
    to["WeekSeries.ghostCrossing"] = [](const Arguments& args) {
        return result(series(args).ghostCrossing(args.get<double>("factor")));
    };
}

void addWhatIf(Operations& to) {
    to["WhatIfSpace.modelFactor"] = [](const Arguments& args) {
        return result(space(args).modelFactor(change(args).model));
    };
    to["WhatIfSpace.effortFactor"] = [](const Arguments& args) {
        return result(space(args).effortFactor(change(args).effort));
    };
    to["WhatIfSpace.factor"] = [](const Arguments& args) { return result(space(args).factor(change(args))); };
    to["WhatIfSpace.applies"] = [](const Arguments& args) { return result(space(args).applies(change(args))); };
    to["WhatIfSpace.isEstimate"] = [](const Arguments& args) {
        return result(space(args).isEstimate(change(args).effort));
    };
    to["WhatIfSpace.cheapestCombination"] = [](const Arguments& args) {
        return result(space(args).cheapestCombination());
    };
}

void addLiveModel(Operations& to) {
    to["LiveModel.settledClass"] = [](const Arguments& args) {
        return result(live(args).settledClass(args.get<double>("share")));
    };
    to["LiveModel.settledEffort"] = [](const Arguments& args) {
        return result(live(args).settledEffort(args.get<double>("share")));
    };
    to["LiveModel.space"] = [](const Arguments& args) {
        return result(live(args).space(args.get<WhatIfSpace>("pricedBy")));
    };
}

} // namespace

void addRecordOperations(Operations& operations) {
    addWeighting(operations);
    addGauge(operations);
    addWeekSeries(operations);
    addWhatIf(operations);
    addLiveModel(operations);
}

} // namespace Conformance
