#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "UsageModel/UsageSnapshot.h"

/// The tab that shows what each model family cost of the week.
namespace HarrowlaneApp::ModelsTexts {

inline constexpr std::string_view heading = "This week";
inline constexpr std::string_view emptyText = "No usage recorded this week yet.";

struct Row {
    UsageModel::ModelClass modelClass = UsageModel::ModelClass::other;
    std::string name;
    /// Of the week, 0 to 1.
    double share = 0.0;
    /// Without its sign, which is drawn smaller.
    std::string percentNumber;
    bool isUsed = false;

    friend bool operator==(const Row&, const Row&) = default;
};

/// A row a family, in the enumeration's order. None where nothing was used: `emptyText` takes their place.
[[nodiscard]] std::vector<Row> rows(const UsageModel::ModelBreakdown& models);
/// That the two Opus-class families share a cap; absent unless both were used.
[[nodiscard]] std::optional<std::string> note(const UsageModel::ModelBreakdown& models);

} // namespace HarrowlaneApp::ModelsTexts
