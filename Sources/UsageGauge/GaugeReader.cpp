#include "UsageGauge/GaugeReader.h"

#include <system_error>

#include "UsageModel/Files.h"

namespace UsageGauge {

namespace {

// A gauge takes some hundred bytes; whatever is this large is something else, and not worth the memory.
constexpr std::int64_t largestGauge = 1 << 20;

} // namespace

std::optional<UsageModel::GaugeReading> GaugeReader::read() const {
    if (UsageModel::fileStat(url).size > largestGauge) return std::nullopt;
    try {
        return UsageModel::GaugeReading::decode(UsageModel::readWholeFile(url));
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

std::vector<UsageModel::Anchor> GaugeReader::anchors() const {
    const auto reading = read();
    return reading ? reading->anchors() : std::vector<UsageModel::Anchor>();
}

} // namespace UsageGauge
