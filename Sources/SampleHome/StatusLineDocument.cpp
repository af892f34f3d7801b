#include "SampleHome/SampleHome.h"

#include <cstdint>

#include "SampleHome/Put.h"

namespace SampleHome {

namespace {

std::uint64_t wholeSeconds(double instant) {
    return static_cast<std::uint64_t>(instant);
}

} // namespace

std::string statusLineDocument(double now) {
    constexpr double sessionLeft = 2 * 3600 + 780;
    constexpr double weekLeft = 3 * 86400 + 7200;
    std::string text;
    put(text, R"({"session_id":"5f0c54a1-6f0e-4d2b-9c0f-1c7e2f9a4b11","cwd":"/home/user/orchard",)",
        R"("model":{"id":"claude-opus-4-5","display_name":"Opus"},"version":"2.1.9",)",
        R"("workspace":{"current_dir":"/home/user/orchard","project_dir":"/home/user/orchard"},)",
        R"("cost":{"total_cost_usd":1.84,"total_duration_ms":914233},"exceeds_200k_tokens":false,)",
        R"("rate_limits":{"five_hour":{"used_percentage":42.5,"resets_at":)", wholeSeconds(now + sessionLeft),
        R"(},"seven_day":{"used_percentage":58.2,"resets_at":)", wholeSeconds(now + weekLeft), "}}}\n");
    return text;
}

} // namespace SampleHome
