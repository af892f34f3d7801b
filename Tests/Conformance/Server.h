#pragma once

#include <iosfwd>
#include <string_view>

#include "Conformance/Operations.h"

namespace Conformance {

/// The answer to one request, a line of JSON `{"op": name, "args": {...}}`: `{"ok": result}`, or `{"error": words}`
/// where the operation is unknown or the line or its arguments cannot be read. Never throws.
[[nodiscard]] nlohmann::json answer(const Operations& operations, std::string_view request);

/// Answers each line of `in` with one line on `out`, in order, until the end of `in`. An answer is flushed before the
/// next line is read, so that the asker may wait for each.
void serve(const Operations& operations, std::istream& in, std::ostream& out);

} // namespace Conformance
