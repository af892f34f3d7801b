#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace SampleHome {

/// A small generator whose numbers are the same with every compiler and library; the distributions of the standard
/// library are not. Integer arithmetic only, for the same reason.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// The generator of the `index`-th part of a whole: parts can be made in any order.
    static Random part(std::uint64_t seed, std::uint64_t index) { return Random(Random(seed ^ mixed(index)).next()); }

    std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15U;
        return mixed(state_);
    }

    /// 0 to `bound` - 1, and 0 for a bound of 0.
    std::uint64_t below(std::uint64_t bound) { return bound == 0 ? 0 : next() % bound; }

    /// `low` to `high`, both included.
    std::uint64_t between(std::uint64_t low, std::uint64_t high) { return low + below(high - low + 1); }

    /// True in `count` of `outOf` cases.
    bool chance(std::uint64_t count, std::uint64_t outOf) { return below(outOf) < count; }

    template <typename T, std::size_t N>
    const T& pick(const std::array<T, N>& choices) {
        return choices[below(N)];
    }

    /// An index of `weights`, as often as its weight says. 0 if all weights are 0.
    std::size_t weighted(std::span<const unsigned> weights) {
        std::uint64_t total = 0;
        for (const unsigned weight : weights) total += weight;
        std::uint64_t rest = below(total);
        for (std::size_t i = 0; i < weights.size(); ++i) {
            if (rest < weights[i]) return i;
            rest -= weights[i];
        }
        return 0;
    }

private:
    // The finaliser of SplitMix64.
    static std::uint64_t mixed(std::uint64_t value) {
        value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9U;
        value = (value ^ (value >> 27U)) * 0x94d049bb133111ebU;
        return value ^ (value >> 31U);
    }

    std::uint64_t state_;
};

/// A distribution told by nine of its quantiles, straight between them. So a distribution is written down as it was
/// measured, and needs no logarithm, whose last digit differs between libraries.
struct Spread {
    /// In per mille of all values: where the `values` stand.
    static constexpr std::array<std::uint64_t, 9> perMille{0, 100, 250, 500, 750, 900, 990, 999, 1000};

    std::array<std::uint64_t, 9> values;

    [[nodiscard]] std::uint64_t draw(Random& random) const {
        constexpr std::uint64_t fine = 1000;
        const std::uint64_t rank = random.below(1000 * fine);
        std::size_t upper = 1;
        while (rank >= perMille[upper] * fine) ++upper;
        const std::uint64_t from = perMille[upper - 1] * fine;
        const std::uint64_t width = perMille[upper] * fine - from;
        return values[upper - 1] + (values[upper] - values[upper - 1]) * (rank - from) / width;
    }
};

} // namespace SampleHome
