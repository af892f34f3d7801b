#pragma once

#include "SampleHome/Random.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace SampleHome {

/// A long text, already escaped for a JSON string, of which any stretch can be had at the price of a copy.
/// Stretches begin and end between snippets, so no escape and no UTF-8 sequence is ever cut.
class TextPool {
public:
    /// What people and models write: sentences in several languages, quotes, line ends, emoji.
    static const TextPool& prose();
    /// What tools return: code, listings, diffs, output with colours.
    static const TextPool& code();
    /// Letters without a pattern, as in signatures and images.
    static const TextPool& base64();

    /// Appends a stretch of at least `size` bytes and about one snippet more at most; nothing for a size of 0.
    void append(std::string& out, Random& random, std::uint64_t size) const;

private:
    /// The snippet number `index`, which `random` may vary.
    using Snippet = std::string (*)(Random& random, std::uint64_t index);

    TextPool(Snippet snippet, std::uint64_t seed);

    /// A stretch that begins at some snippet, `size` bytes long or to the pool's end.
    [[nodiscard]] std::string_view stretch(Random& random, std::uint64_t size) const;

    std::string text_;
    std::vector<std::size_t> cuts_;
};

} // namespace SampleHome
