#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "HarrowlaneApp/Alerts/Banner.h"
#include "Pipeline/HeavyUser.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/UsageSnapshot.h"

/// What must hold at each look at a program that runs for long, whatever its user does.
namespace Pipeline {

/// A text as a person expects it: said, without a number that is none, a span below zero, or what a template left over.
void expectWellFormed(const std::string& text);

/// Every meter is what the newest reading said of its window, and what was spent since; nothing else moves it.
class MeterPromise {
public:
    explicit MeterPromise(const HeavyUser& user) : user_(user) {}

    /// `written` is the instant up to which the logs are told, and `reading` the newest that was ever there.
    void look(const UsageModel::UsageSnapshot& snapshot, UsageModel::Date written,
              const std::optional<UsageModel::GaugeReading>& reading);

    /// The occurrences of a window that had a reading.
    [[nodiscard]] std::size_t occurrences(UsageModel::WindowKind window) const;
    /// How often a meter moved on the logs' word alone.
    [[nodiscard]] int stepsByLogs() const { return stepsByLogs_; }
    [[nodiscard]] int looksWithoutReading() const { return looksWithoutReading_; }
    /// How often nothing but an earlier look told what a session is worth.
    [[nodiscard]] int looksWithHeldCap() const { return looksWithHeldCap_; }

private:
    struct Seen {
        UsageModel::WindowState meter;
        double scale = 0.0;
    };

    void expectNewsForTheCap(const std::optional<double>& cap, bool isNews);
    void expectExplained(const Seen& seen, bool isNewReading);
    void expectNearTheTruth(const UsageModel::WindowState& meter) const;
    void expectMovedByLogs(const Seen& seen) const;
    [[nodiscard]] double scaleInForce(const UsageModel::WindowState& meter) const;
    [[nodiscard]] double percent(UsageModel::WindowKind window) const;

    const HeavyUser& user_;
    UsageModel::Date written_;
    UsageModel::Date writtenBefore_;
    std::optional<UsageModel::GaugeReading> reading_;
    std::optional<double> cap_;
    std::size_t ceilings_ = 0;
    std::map<UsageModel::WindowKind, Seen> before_;
    std::map<UsageModel::WindowKind, std::set<double>> occurrences_;
    int stepsByLogs_ = 0;
    int looksWithoutReading_ = 0;
    int looksWithHeldCap_ = 0;
};

/// Each level is told once in an occurrence of its window, or in a breach, the higher ones alone where several are
/// reached, and none that was reached stays untold.
class BannerPromise {
public:
    /// A banner is posted that speaks of a snapshot.
    void post(const HarrowlaneApp::Banner& banner, const UsageModel::UsageSnapshot& snapshot);
    /// A run is through, with all its banners.
    void publish(const UsageModel::UsageSnapshot& snapshot);

    /// How many banners told a level.
    [[nodiscard]] int told(std::int64_t threshold) const;
    [[nodiscard]] int told(HarrowlaneApp::Banner::Urgency pace) const;

private:
    void postLevel(const HarrowlaneApp::Banner& banner, const UsageModel::UsageSnapshot& snapshot);
    void postPace(const HarrowlaneApp::Banner& banner, const UsageModel::UsageSnapshot& snapshot);

    /// The highest level told in an occurrence, by its window and start.
    std::map<std::pair<UsageModel::WindowKind, double>, std::int64_t> levels_;
    std::map<std::int64_t, int> toldLevels_;
    /// The highest urgency told in the breach that lasts; absent where none was.
    std::optional<HarrowlaneApp::Banner::Urgency> pace_;
    std::map<HarrowlaneApp::Banner::Urgency, int> toldPaces_;
};

} // namespace Pipeline
