#include "HarrowlaneApp/Copy/ModelsTexts.h"

#include "HarrowlaneApp/Copy/Figures.h"

namespace HarrowlaneApp::ModelsTexts {

using UsageModel::ModelBreakdown;
using UsageModel::ModelClass;

std::vector<Row> rows(const ModelBreakdown& models) {
    std::vector<Row> rows;
    if (!(models.total() > 0)) return rows;
    for (const ModelClass modelClass : UsageModel::allCases<ModelClass>) {
        const double share = models.fraction(modelClass);
        rows.push_back({
            .modelClass = modelClass,
            .name = std::string(displayName(modelClass)),
            .share = share,
            .percentNumber = Figures::percentNumber(share),
            .isUsed = share > 0,
        });
    }
    return rows;
}

std::optional<std::string> note(const ModelBreakdown& models) {
    const double opus = models.fraction(ModelClass::opus);
    const double fable = models.fraction(ModelClass::fable);
    if (!(opus > 0) || !(fable > 0)) return std::nullopt;
    return "Opus and Fable share the same weekly cap — together they are " + Figures::percent(opus + fable) +
           " of this week.";
}

} // namespace HarrowlaneApp::ModelsTexts
