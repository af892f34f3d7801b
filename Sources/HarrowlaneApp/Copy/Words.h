#pragma once

#include <span>
#include <string>
#include <string_view>

namespace HarrowlaneApp::Words {

/// The ASCII letters in lower case.
[[nodiscard]] std::string lowerCase(std::string_view text);
/// The parts with `separator` between them.
[[nodiscard]] std::string joined(std::span<const std::string> parts, std::string_view separator);

} // namespace HarrowlaneApp::Words
