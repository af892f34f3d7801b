// Any bytes as a status line document: the reading survives being stored and read again, and its text is one line.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "Shim/StatusText.h"
#include "UsageModel/Json.h"
#include "UsageModel/StatusLineInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = UsageModel::StatusLineInput::decode({reinterpret_cast<const char*>(data), size});
    if (!input) return 0;
    const auto reading = input->gaugeReading(1790000000.5, "statusLine");
    if (!reading) return 0;

    const auto again = UsageModel::GaugeReading::decode(UsageModel::Json::toText(UsageModel::Json::encode(*reading)));
    fuzzCheck(again == reading, "stored and read again it is the same");
    const std::string text = Shim::statusText(*reading);
    fuzzCheck(!text.empty() && text.size() < 64, "a reading gives a short text");
    fuzzCheck(text.find('\n') == std::string::npos, "the text is one line");
    return 0;
}
