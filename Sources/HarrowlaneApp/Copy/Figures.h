#pragma once

#include <string>

/// Figures as they stand in texts: English, whatever the locale of the process. One that is no finite number is a dash.
namespace HarrowlaneApp::Figures {

/// A fraction in whole percent, halves away from zero.
[[nodiscard]] double wholePercent(double fraction);
/// "58"
[[nodiscard]] std::string percentNumber(double fraction);
/// "58%"
[[nodiscard]] std::string percent(double fraction);
/// "57.7%"
[[nodiscard]] std::string finePercent(double fraction);
/// "1.22×"
[[nodiscard]] std::string multiple(double value);
/// The value with so many digits behind the point.
[[nodiscard]] std::string fixed(double value, int decimals);

} // namespace HarrowlaneApp::Figures
