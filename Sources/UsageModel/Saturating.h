#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>

namespace UsageModel {

/// The exact sum of up to a few billion counts, held to the nearest that fits 64 bits. 0 for none.
constexpr std::int64_t saturatingSum(std::initializer_list<std::int64_t> counts) {
    using Limits = std::numeric_limits<std::int64_t>;
    __extension__ using Wide = __int128;
    Wide sum = 0;
    for (const std::int64_t count : counts) sum += count;
    return static_cast<std::int64_t>(std::clamp(sum, Wide{Limits::min()}, Wide{Limits::max()}));
}

} // namespace UsageModel
