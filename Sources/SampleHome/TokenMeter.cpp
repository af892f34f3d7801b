#include "SampleHome/TokenMeter.h"

#include "SampleHome/Put.h"

namespace SampleHome {

namespace {

constexpr Spread inputTokens{{1, 2, 2, 3, 8, 10, 900, 4000, 9000}};
constexpr Spread outputTokens{{8, 24, 80, 240, 620, 1300, 3400, 4000, 4200}};
constexpr Spread cacheWrites{{100, 190, 390, 830, 2000, 4600, 22000, 29000, 30000}};

void putCounts(std::string& out, const Tokens& tokens) {
    put(out, R"("input_tokens":)", tokens.input, R"(,"cache_creation_input_tokens":)", tokens.cacheCreation,
        R"(,"cache_read_input_tokens":)", tokens.cacheRead);
}

// The oldest and the newest write their cache for an hour; which of the two keys counts tells a reader nothing.
void putCacheLifetimes(std::string& out, Era era, std::uint64_t written) {
    const bool forAnHour = era >= Era::Slugs;
    put(out, R"("cache_creation":{"ephemeral_5m_input_tokens":)", forAnHour ? 0U : written,
        R"(,"ephemeral_1h_input_tokens":)", forAnHour ? written : 0U, "}");
}

void putIterations(std::string& out, Era era, const Tokens& tokens) {
    put(out, R"(,"iterations":[{"input_tokens":)", tokens.input, R"(,"output_tokens":)", tokens.output,
        R"(,"cache_read_input_tokens":)", tokens.cacheRead, R"(,"cache_creation_input_tokens":)", tokens.cacheCreation,
        ",");
    putCacheLifetimes(out, era, tokens.cacheCreation);
    put(out, R"(,"type":"message"}],"speed":"standard")");
}

} // namespace

TokenMeter::TokenMeter(Random& random)
    : context_(random.between(12'000, 24'000)),
      limit_(random.between(150'000, 190'000)) {}

Tokens TokenMeter::nextMessage(Random& random) {
    const Tokens tokens{.input = inputTokens.draw(random),
                        .output = outputTokens.draw(random),
                        .cacheCreation = cacheWrites.draw(random),
                        .cacheRead = context_};
    context_ += tokens.cacheCreation;
    return tokens;
}

void TokenMeter::compact(Random& random) {
    context_ = random.between(20'000, 45'000);
}

void putUsage(std::string& out, Era era, const Tokens& tokens) {
    put(out, R"("usage":{)");
    putCounts(out, tokens);
    if (era == Era::Hooks || era == Era::Slugs) {
        put(out, ",");
        putCacheLifetimes(out, era, tokens.cacheCreation);
    }
    put(out, R"(,"output_tokens":)", tokens.output);
    if (era >= Era::Titles) {
        put(out, R"(,"server_tool_use":{"web_search_requests":0,"web_fetch_requests":0},"service_tier":"standard",)");
        putCacheLifetimes(out, era, tokens.cacheCreation);
        put(out, R"(,"inference_geo":"not_available")");
    } else {
        put(out, R"(,"service_tier":"standard")");
    }
    if (era == Era::Slugs) put(out, R"(,"inference_geo":"not_available")");
    if (era >= Era::Efforts) putIterations(out, era, tokens);
    put(out, "}");
}

} // namespace SampleHome
