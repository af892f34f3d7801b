#include "HarrowlaneApp/Shell/CommandLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace HarrowlaneApp {

namespace {

using Kind = Job::Kind;

struct Switch {
    Kind kind;
    std::string_view name;
};

// In the order in which they are tried.
constexpr std::array<Switch, 7> switches{{
    {Kind::dumpMeter, "--dump-meter"},
    {Kind::dumpMenuBar, "--dump-menubar"},
    {Kind::dumpChart, "--dump-chart"},
    {Kind::dumpIconset, "--dump-iconset"},
    {Kind::notifyTest, "--notify-test"},
    {Kind::dumpChartLive, "--dump-chart-live"},
    {Kind::dumpUI, "--dump-ui"},
}};

std::optional<std::string> valueOf(std::string_view name, std::span<const std::string> arguments) {
    const auto found = std::ranges::find(arguments, name);
    if (found == arguments.end() || found + 1 == arguments.end()) return std::nullopt;
    return *(found + 1);
}

// As one writes a decimal number anywhere: "2", "+2", "-0.5", ".5", "5.", "1e3". No "0x10", "inf" and "nan", which a
// general number parser would take: none of them is decimal. Nor "1e999" and "1e-999", for which there is no double.
std::optional<double> decimal(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    const bool plain = !text.empty() && text.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
    if (!plain) return std::nullopt;
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<Job> jobOf(const Switch& candidate, std::span<const std::string> arguments) {
    if (candidate.kind == Kind::notifyTest) {
        if (std::ranges::find(arguments, candidate.name) == arguments.end()) return std::nullopt;
        return Job{.kind = candidate.kind};
    }
    auto path = valueOf(candidate.name, arguments);
    if (!path) return std::nullopt;
    Job job{.kind = candidate.kind, .path = *std::move(path)};
    if (candidate.kind == Kind::dumpMenuBar) {
        if (const auto scale = valueOf("--scale", arguments)) job.scale = decimal(*scale).value_or(job.scale);
    }
    return job;
}

} // namespace

Job jobFor(std::span<const std::string> arguments) {
    for (const Switch& candidate : switches) {
        if (auto job = jobOf(candidate, arguments)) return *std::move(job);
    }
    return {};
}

} // namespace HarrowlaneApp
