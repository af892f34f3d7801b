#include "SampleHome/Identifiers.h"

namespace SampleHome {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

} // namespace

std::string makeUuid(Random& random) {
    std::string uuid = makeHex(36, random);
    for (const std::size_t dash : {8U, 13U, 18U, 23U}) uuid[dash] = '-';
    uuid[14] = '4';
    uuid[19] = "89ab"[random.below(4)];
    return uuid;
}

std::string makeServiceId(std::string_view prefix, Random& random) {
    // Without 0, O, I and l, like the ones the service gives.
    constexpr std::string_view alphabet = "123456789ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz";
    std::string id(prefix);
    for (int i = 0; i < 22; ++i) id += alphabet[random.below(alphabet.size())];
    return id;
}

std::string makeHex(std::size_t length, Random& random) {
    std::string text(length, '0');
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < length; ++i) {
        if (i % 16 == 0) bits = random.next();
        text[i] = hexDigits[bits & 15U];
        bits >>= 4U;
    }
    return text;
}

} // namespace SampleHome
