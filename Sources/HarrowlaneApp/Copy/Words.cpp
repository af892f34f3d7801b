#include "HarrowlaneApp/Copy/Words.h"

#include <algorithm>

namespace HarrowlaneApp::Words {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::string joined(std::span<const std::string> parts, std::string_view separator) {
    std::string whole;
    for (const std::string& part : parts) {
        if (&part != parts.data()) whole += separator;
        whole += part;
    }
    return whole;
}

} // namespace HarrowlaneApp::Words
