#pragma once

#include <cstdint>
#include <random>

#include "UsageEngine/Scene.h"

namespace UsageEngine {

/// Draws that are the same on every system, which those of the standard library are not.
class Draw {
public:
    explicit Draw(std::uint64_t seed) : engine_(seed) {}

    /// 0 to `count` - 1.
    [[nodiscard]] std::size_t below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
    [[nodiscard]] bool oneIn(std::size_t count) { return below(count) == 0; }
    /// From one number up to but not including another.
    [[nodiscard]] double between(double least, double most) {
        return least + (most - least) * static_cast<double>(engine_() >> 11U) * 0x1p-53;
    }
    [[nodiscard]] const auto& oneOf(const auto& choices) { return choices[below(std::size(choices))]; }
    void shuffle(auto& list) {
        for (std::size_t i = list.size(); i > 1; --i) std::swap(list[i - 1], list[below(i)]);
    }

private:
    std::mt19937_64 engine_;
};

/// What a person may have done over ten weeks, read by a gauge that may know any window or none. The weights of turns
/// are whole multiples of a sixteenth, so that their sums are exact in any order.
[[nodiscard]] Scene randomScene(Draw& draw);

} // namespace UsageEngine
