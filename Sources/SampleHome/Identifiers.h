#pragma once

#include "SampleHome/Random.h"

#include <string>
#include <string_view>

namespace SampleHome {

/// A version 4 UUID: 36 characters.
std::string makeUuid(Random& random);

/// `prefix` and then 22 letters and digits, as in "msg_01Q6BnD6WsdUhkbDmCcjiUHq".
std::string makeServiceId(std::string_view prefix, Random& random);

/// `length` hexadecimal digits.
std::string makeHex(std::size_t length, Random& random);

} // namespace SampleHome
