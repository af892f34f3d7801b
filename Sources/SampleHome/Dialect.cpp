#include "SampleHome/Dialect.h"

#include <algorithm>
#include <array>
#include <span>

namespace SampleHome {

namespace {

struct Stage {
    Dialect dialect;
    std::uint64_t oldestAge;
};

// Half of the history has no effort levels, so that both the logs with and those without them carry weight.
constexpr std::array stages{
    Stage{{Era::Efforts, "2.1.219"}, 420}, Stage{{Era::Titles, "2.1.123"}, 530}, Stage{{Era::Slugs, "2.1.38"}, 680},
    Stage{{Era::Hooks, "2.1.15"}, 810},    Stage{{Era::Hooks, "2.1.11"}, 950},   Stage{{Era::Plain, "1.0.53"}, 1100},
};

struct Models {
    std::array<std::string_view, 4> names;
    std::array<unsigned, 4> sessionWeights;
    std::array<unsigned, 4> subAgentWeights;
};

constexpr Models plainModels{
    {"claude-opus-4-20250514", "claude-sonnet-4-20250514", "claude-3-5-haiku-20241022", "claude-opus-4-1-20250805"},
    {55, 35, 2, 8},
    {5, 60, 35, 0}};
constexpr Models hookModels{
    {"claude-opus-4-5-20251101", "claude-sonnet-4-5-20250929", "claude-haiku-4-5-20251001", "claude-haiku-4-5"},
    {60, 32, 5, 3},
    {10, 35, 35, 20}};
constexpr Models slugModels{
    {"claude-opus-4-6", "claude-sonnet-4-5-20250929", "claude-haiku-4-5-20251001", "claude-opus-4-5-20251101"},
    {50, 30, 5, 15},
    {10, 35, 50, 5}};
constexpr Models titleModels{{"claude-opus-4-6", "claude-sonnet-4-6", "claude-haiku-4-5", "claude-sonnet-4-5-20250929"},
                             {45, 42, 5, 8},
                             {8, 40, 47, 5}};
constexpr Models effortModels{
    {"claude-opus-5", "claude-fable-1", "claude-sonnet-4-6", "claude-haiku-4-5"}, {56, 14, 24, 6}, {10, 2, 40, 48}};

const Models& modelsOf(Era era) {
    switch (era) {
    case Era::Plain: return plainModels;
    case Era::Hooks: return hookModels;
    case Era::Slugs: return slugModels;
    case Era::Titles: return titleModels;
    case Era::Efforts: break;
    }
    return effortModels;
}

} // namespace

Dialect pickDialect(std::uint64_t age, Random& random) {
    constexpr std::uint64_t overlap = 80;
    const std::uint64_t shifted = std::min<std::uint64_t>(age + random.below(overlap), 1099);
    return std::ranges::find_if(stages, [&](const Stage& stage) { return shifted < stage.oldestAge; })->dialect;
}

std::string_view pickModel(Era era, Speaker speaker, Random& random) {
    const Models& models = modelsOf(era);
    return models.names[random.weighted(speaker == Speaker::Session ? models.sessionWeights : models.subAgentWeights)];
}

std::string_view pickEffort(Era era, std::string_view model, Random& random) {
    constexpr std::array<std::string_view, 5> levels{"low", "medium", "high", "xhigh", "max"};
    constexpr std::array<unsigned, 5> weights{8, 17, 55, 13, 7};
    if (era < Era::Efforts || model.find("haiku") != std::string_view::npos) return {};
    return levels[random.weighted(weights)];
}

} // namespace SampleHome
