#include "SampleHome/SyntheticTexts.h"

#include "SampleHome/Put.h"

#include <array>
#include <chrono>

namespace SampleHome::SyntheticTexts {

namespace {

struct Zone {
    std::string_view name;
    std::int64_t minutesEast; ///< in winter
    bool hasEuropeanSummer = false;
};

constexpr std::array<Zone, 4> zones{
    {{"UTC", 0}, {"Europe/Helsinki", 120, true}, {"Asia/Kolkata", 330}, {"America/Phoenix", -420}}};

bool isEuropeanSummer(std::int64_t minute) {
    using namespace std::chrono;
    const sys_time<minutes> moment{minutes{minute}};
    const year thisYear = year_month_day{floor<days>(moment)}.year();
    return moment >= sys_days{thisYear / March / Sunday[last]} + 1h &&
           moment < sys_days{thisYear / October / Sunday[last]} + 1h;
}

std::int64_t minuteOfDayIn(const Zone& zone, std::int64_t minute) {
    constexpr std::int64_t minutesOfDay = 1440;
    const std::int64_t summer = zone.hasEuropeanSummer && isEuropeanSummer(minute) ? 60 : 0;
    return (minute + zone.minutesEast + summer) % minutesOfDay;
}

/// As the program writes it: "2pm" at a full hour, else "6:40pm".
std::string clockText(std::int64_t minuteOfDay) {
    const auto hour = static_cast<std::uint64_t>(minuteOfDay / 60);
    const auto minute = static_cast<std::uint64_t>(minuteOfDay % 60);
    std::string text;
    put(text, hour % 12 == 0 ? 12U : hour % 12);
    if (minute > 0) put(text, minute < 10 ? ":0" : ":", minute);
    put(text, hour < 12 ? "am" : "pm");
    return text;
}

/// The clock time in `zone` of a reset up to five hours after `instant`, as often at a full hour as not.
std::string resetText(std::int64_t instant, const Zone& zone, Random& random) {
    const std::int64_t step = random.chance(1, 2) ? 60 : 10;
    const std::int64_t ahead = instant / 60'000 + static_cast<std::int64_t>(random.between(15, 235));
    return clockText(minuteOfDayIn(zone, (ahead / step + 1) * step));
}

} // namespace

std::string limit(std::int64_t instant, Random& random) {
    constexpr std::array<std::string_view, 5> openings{"You've hit your session limit", "Session limit reached",
                                                       "You've hit your weekly limit", "Weekly limit reached",
                                                       "Opus weekly limit reached"};
    constexpr std::array<unsigned, 5> weights{60, 15, 8, 10, 7};
    const Zone& zone = random.pick(zones);
    std::string text(openings[random.weighted(weights)]);
    put(text, " · resets ", resetText(instant, zone, random), " (", zone.name, ")");
    return text;
}

std::string_view harmless(Random& random) {
    // The last two name no window a reader knows, or use another bullet and a date.
    constexpr std::array<std::string_view, 5> texts{
        "No response requested.", "No response requested.",
        R"(API Error: 529 {\"type\":\"error\",\"error\":{\"type\":\"overloaded_error\",\"message\":\"Overloaded\"}})",
        "You've hit your limit · resets 4:50am (Europe/Rome)", "Opus weekly limit reached ∙ resets Oct 31, 9am"};
    return random.pick(texts);
}

} // namespace SampleHome::SyntheticTexts
