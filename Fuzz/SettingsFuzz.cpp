// Any bytes as a settings file: a status line that is set and taken away again leaves all else as it was.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "UsageGauge/SettingsDocument.h"
#include "UsageModel/Json.h"

namespace {

using UsageGauge::SettingsDocument;

void checkRoundTrip(SettingsDocument document) {
    const auto prior = document.member("statusLine");
    const std::string before = document.text();
    document.setMember("statusLine", R"({"type":"command","command":"'x'"})");
    SettingsDocument written = SettingsDocument::parse(document.text());
    fuzzCheck(written.member("statusLine") == R"({"command":"'x'","type":"command"})", "what was set is there");

    written.removeMember("statusLine");
    if (prior) written.setMember("statusLine", *prior);
    fuzzCheck(written.text() == before, "all else is as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        checkRoundTrip(SettingsDocument::parse({reinterpret_cast<const char*>(data), size}));
    } catch (const UsageModel::Json::Error&) {
        // No JSON, and told so.
    }
    return 0;
}
