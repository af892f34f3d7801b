#include "Pipeline/WatchedHome.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include "Shim/GaugeWriter.h"
#include "UsageIngest/LogDiscovery.h"
#include "UsageIngest/TimeParsing.h"

namespace Pipeline {

namespace {

using UsageModel::Date;
using UsageModel::WindowKind;
namespace fs = std::filesystem;

/// When a line says that it was written; absent where it does not.
std::optional<Date> writtenAt(const std::string& line) {
    constexpr std::string_view label = R"("timestamp":")";
    const std::size_t place = line.find(label);
    if (place == std::string::npos) return std::nullopt;
    const std::size_t from = place + label.size();
    return UsageIngest::TimeParsing::iso8601UTC(line.substr(from, line.find('"', from) - from));
}

} // namespace

WatchedHome::WatchedHome(const Plan& plan)
    : store_(folder_ / "state/usage.db"),
      gauge_{.url = folder_ / "state/gauge.json"},
      aggregator_{.calendar = plan.calendar} {
    for (const std::uint64_t person : plan.people) {
        const fs::path made = folder_ / ("made" + std::to_string(person));
        const auto summary = SampleHome::makeSampleHome(
            {.home = made, .seed = person, .bytes = 1'500'000, .now = plan.end.secondsSince1970});
        turnsInAll_ += summary.turns;
        limitMessagesInAll_ += summary.limitMessages;
        load(made);
    }
}

void WatchedHome::load(const fs::path& made) {
    for (const auto& entry : fs::recursive_directory_iterator(made)) {
        if (!entry.is_regular_file()) continue;
        Log log{.path = folder_ / "home" / fs::relative(entry.path(), made), .lines = {}};
        std::ifstream stream(entry.path());
        Date written{-1e12};
        for (std::string line; std::getline(stream, line);) {
            written = std::max(written, writtenAt(line).value_or(written));
            log.lines.push_back({.written = written, .text = line + "\n"});
        }
        logs_.push_back(std::move(log));
    }
}

void WatchedHome::liveUntil(Date instant) {
    for (Log& log : logs_) {
        std::string grown;
        for (; log.told < log.lines.size() && log.lines[log.told].written <= instant; ++log.told)
            grown += log.lines[log.told].text;
        if (!grown.empty()) TestSupport::appendFile(log.path, grown);
    }
}

void WatchedHome::readGauge(Date instant) {
    UsageModel::GaugeReading reading{.capturedAt = instant.secondsSince1970, .source = "statusLine", .windows = {}};
    for (const WindowKind kind : {WindowKind::session5h, WindowKind::weeklyAll})
        reading.windows[std::string(statusLineKey(kind))] = official(kind, instant);
    Shim::storeGauge(reading, gauge_.url);
}

UsageModel::GaugeWindow WatchedHome::official(WindowKind kind, Date instant) {
    const double length = nominalDuration(kind);
    const double limit = kind == WindowKind::session5h ? 0.015 : 0.1; // log units; this person gets near them
    const Date start{std::floor(instant.secondsSince1970 / length) * length};
    double used = 0;
    for (const auto& event : *store_.allEvents()) {
        if (event.ts >= start && event.ts < instant) used += weightOf(event);
    }
    return {.usedPercentage = std::min(std::round(100 * used / limit), 100.0),
            .resetsAt = (start + length).secondsSince1970};
}

std::optional<double> WatchedHome::lastRead(WindowKind kind, Date now) const {
    const auto reading = gauge_.read();
    if (!reading) return std::nullopt;
    const auto& window = reading->windows.at(std::string(statusLineKey(kind)));
    if (window.resetsAt <= now.secondsSince1970) return std::nullopt;
    return *window.usedPercentage / 100;
}

UsageModel::UsageSnapshot WatchedHome::refresh(Date now) {
    store_.sync(UsageIngest::LogDiscovery(folder_ / "home/.claude/projects").discover());
    const auto events = store_.allEvents();
    const auto anchors = store_.anchors();
    UsageModel::UsageSnapshot snapshot = aggregator_.snapshot({.events = *events,
                                                               .anchors = anchors,
                                                               .gauge = gauge_.read(),
                                                               .now = now,
                                                               .ingest = UsageModel::IngestProgress::idle(),
                                                               .heldSessionCap = heldSessionCap_});
    heldSessionCap_ = snapshot.sessionCapInLogUnits;
    return snapshot;
}

} // namespace Pipeline
