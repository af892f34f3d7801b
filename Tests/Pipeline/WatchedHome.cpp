#include "Pipeline/WatchedHome.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <optional>
#include <string_view>

#include "Pipeline/OfficialCount.h"
#include "SampleHome/SampleHome.h"
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

WatchedHome::WatchedHome(const UsageModel::AppPaths& paths, Date end) : paths_(paths), books_(folder_ / "books.db") {
    const fs::path made = folder_ / "made";
    const auto summary =
        SampleHome::makeSampleHome({.home = made, .seed = 5, .bytes = 1'500'000, .now = end.secondsSince1970});
    turnsInAll_ = summary.turns;
    limitMessagesInAll_ = summary.limitMessages;
    load(made);
}

void WatchedHome::load(const fs::path& made) {
    for (const auto& entry : fs::recursive_directory_iterator(made)) {
        if (!entry.is_regular_file()) continue;
        Log log{.path = paths_.home() / fs::relative(entry.path(), made), .lines = {}};
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
    books_.sync(UsageIngest::LogDiscovery(paths_.sessionLogs()).discover());
}

void WatchedHome::readGauge(Date instant) {
    UsageModel::GaugeReading reading{.capturedAt = instant.secondsSince1970, .source = "statusLine", .windows = {}};
    for (const WindowKind kind : {WindowKind::session5h, WindowKind::weeklyAll})
        reading.windows[std::string(statusLineKey(kind))] = official(kind, instant);
    Shim::storeGauge(reading, paths_.gaugeFile());
}

UsageModel::GaugeWindow WatchedHome::official(WindowKind kind, Date instant) {
    const double length = nominalDuration(kind);
    const double limit = kind == WindowKind::session5h ? 0.015 : 0.1; // log units; this person gets near them
    const Date start = startOfSpan(instant, length);
    double used = 0;
    for (const auto& event : *books_.allEvents()) {
        if (event.ts >= start && event.ts < instant) used += weightOf(event);
    }
    return {.usedPercentage = std::min(std::round(100 * used / limit), 100.0),
            .resetsAt = (start + length).secondsSince1970};
}

} // namespace Pipeline
