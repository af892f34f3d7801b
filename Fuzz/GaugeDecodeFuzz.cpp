// Any bytes as a gauge file: what is decoded survives being written and read again, and asserts at most one percentage
// a window, in the order of the windows.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "FuzzCheck.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/Json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using UsageModel::GaugeReading;
    const auto reading = GaugeReading::decode({reinterpret_cast<const char*>(data), size});
    if (!reading) return 0;

    const auto again = GaugeReading::decode(UsageModel::Json::toText(UsageModel::Json::encode(*reading)));
    fuzzCheck(again == reading, "written and read again it is the same");
    const auto anchors = reading->anchors();
    fuzzCheck(anchors.size() <= 3, "at most one a window");
    // No two of a window: each is followed by one that is strictly later.
    const auto outOfOrder =
        std::ranges::adjacent_find(anchors, std::ranges::greater_equal(), &UsageModel::Anchor::window);
    fuzzCheck(outOfOrder == anchors.end(), "in the order of the windows");
    return 0;
}
