#pragma once

#include <string>

#include "Report/Report.h"

namespace Report {

/// The report for scripts: one JSON object on one line, ended by a newline. Instants and spans are in seconds, days are
/// "YYYY-MM-DD"; `official` is null where there is no reading; a window without a known reset has no `resetsAt`.
[[nodiscard]] std::string reportJson(const UsageReport& report);

} // namespace Report
