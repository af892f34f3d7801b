#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "SampleHome/Random.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/WindowKind.h"

namespace Pipeline {

/// Somebody who works all day at two machines at once and changes models as they go, and the service that counts both
/// against the same limits: whoever runs into one is told so, and waits for the reset; out of Opus they go on without.
/// The whole life is made at once, and told line by line.
class HeavyUser {
public:
    struct Plan {
        UsageModel::Date begin;
        /// Before, they worked a quarter as much, and met no limit.
        UsageModel::Date heavyFrom;
        UsageModel::Date end;
        UsageModel::Calendar home;
        /// Where they are from `flight` on.
        UsageModel::Calendar abroad;
        UsageModel::Date flight;
        /// In between the first machine is shut.
        UsageModel::Date asleep;
        UsageModel::Date awake;
    };
    struct Turn {
        UsageModel::Date at;
        UsageModel::ModelClass modelClass = UsageModel::ModelClass::other;
        double weight = 0.0;
    };
    struct Ceiling {
        UsageModel::Date at;
        UsageModel::WindowKind window = UsageModel::WindowKind::session5h;
    };

    explicit HeavyUser(const Plan& plan);

    [[nodiscard]] const UsageModel::Calendar& calendar(UsageModel::Date at) const {
        return at < plan_.flight ? plan_.home : plan_.abroad;
    }
    /// What a full window is worth, in log units.
    [[nodiscard]] static double limit(UsageModel::WindowKind window);

    /// Tells the logs below a folder all that happened before an instant, later than the one before. Nothing ever
    /// happens at a full second.
    void liveUntil(UsageModel::Date instant, const std::filesystem::path& logs);
    /// What the status line is told at an instant.
    [[nodiscard]] UsageModel::GaugeReading reading(UsageModel::Date instant) const;
    /// What was spent of a window's limit in a span, as far as it was told, in log units.
    [[nodiscard]] double spent(UsageModel::WindowKind window, UsageModel::Date from, UsageModel::Date to) const;

    /// The whole life, told or not.
    [[nodiscard]] std::span<const Turn> turns() const { return turns_; }
    [[nodiscard]] std::span<const Ceiling> ceilings() const { return ceilings_; }
    /// Those that were told.
    [[nodiscard]] std::size_t ceilingsTold() const;

private:
    struct Machine {
        std::string_view name;
        /// Its turns lie in a part of each minute that is its own.
        double second = 0.0;
        std::string_view model = "claude-opus-4-5";
        std::uint64_t context = 20'000;
        UsageModel::Date lockedUntil;
    };
    struct Line {
        UsageModel::Date at;
        std::string log;
        std::string text;
    };
    struct Window {
        UsageModel::Date start;
        double used = 0.0;
    };

    void live(Machine& machine, UsageModel::Date minute);
    [[nodiscard]] unsigned eagerness(const Machine& machine, UsageModel::Date at) const;
    void openWindows(UsageModel::Date at);
    [[nodiscard]] std::optional<UsageModel::WindowKind> fullWindow(const Machine& machine) const;
    void perhapsChangeModel(Machine& machine);
    void takeTurn(Machine& machine, UsageModel::Date at);
    void hit(UsageModel::WindowKind window, Machine& machine, UsageModel::Date at);
    void addLine(const Machine& machine, UsageModel::Date at, const std::string& rest);
    [[nodiscard]] std::string resetText(UsageModel::WindowKind window, UsageModel::Date at) const;
    [[nodiscard]] UsageModel::Date startAt(UsageModel::WindowKind window, UsageModel::Date instant) const;

    Plan plan_;
    SampleHome::Random random_{7};
    std::array<Machine, 2> machines_{{{.name = "laptop"}, {.name = "tower", .second = 30.0}}};
    std::array<Window, UsageModel::caseCount<UsageModel::WindowKind>> windows_{};
    std::vector<UsageModel::Date> sessionStarts_;
    std::vector<Turn> turns_;
    std::vector<Ceiling> ceilings_;
    std::vector<Line> lines_;
    std::size_t linesTold_ = 0;
    UsageModel::Date toldUntil_;
};

} // namespace Pipeline
