#include "Report/ReportJson.h"

#include "UsageModel/Json.h"

namespace Report {

namespace {

using nlohmann::json;
using UsageModel::text;

json tallyJson(const Tally& tally) {
    json object = UsageModel::Json::encode(tally);
    object["tokens"] = tally.tokens();
    return object;
}

json windowJson(const OfficialWindow& window) {
    json object{{"window", text(window.window)}, {"usedPercentage", window.usedPercentage}};
    if (window.resetsAt) object["resetsAt"] = window.resetsAt->secondsSince1970;
    return object;
}

json officialJson(const UsageReport& report) {
    if (!report.official) return nullptr;
    json windows = json::array();
    for (const OfficialWindow& window : report.official->windows) windows.push_back(windowJson(window));
    return {
        {"capturedAt", report.official->capturedAt.secondsSince1970},
        {"ageSeconds", report.now - report.official->capturedAt},
        {"source", text(report.official->source)},
        {"windows", std::move(windows)},
    };
}

json spanJson(Span span, const SpanUsage& usage) {
    json byClass = json::object();
    for (const auto& [modelClass, tally] : usage.byClass) byClass[std::string(text(modelClass))] = tallyJson(tally);
    json object{{"byClass", std::move(byClass)}, {"total", tallyJson(usage.total)}};
    if (const std::optional<double> length = seconds(span)) object["seconds"] = *length;
    return object;
}

json dayJson(const UsageReport& report, const DayUsage& day) {
    json object = tallyJson(day.tally);
    object["date"] = absl::FormatCivilTime(absl::CivilDay(report.calendar.civil(day.start)));
    object["start"] = day.start.secondsSince1970;
    return object;
}

} // namespace

std::string reportJson(const UsageReport& report) {
    json spans = json::object();
    for (const auto& [span, usage] : report.spans) spans[std::string(text(span))] = spanJson(span, usage);
    json days = json::array();
    for (const DayUsage& day : report.busiestDays) days.push_back(dayJson(report, day));
    const json object{
        {"now", report.now.secondsSince1970}, {"timeZone", report.calendar.zoneName()}, {"logFiles", report.logFiles},
        {"helper", text(report.helper)},      {"official", officialJson(report)},       {"spans", std::move(spans)},
        {"busiestDays", std::move(days)},
    };
    return UsageModel::Json::toText(object) + "\n";
}

} // namespace Report
