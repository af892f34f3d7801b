#pragma once

#include <functional>
#include <string_view>

namespace UsageModel {

/// Calls `onNumber` with each number of a JSON text that stands outside of strings, as a part of `json`. Understands
/// only as much of JSON as this needs: in a text that is no JSON, whatever reads as a number between two other
/// characters is one.
void forEachNumber(std::string_view json, const std::function<void(std::string_view number)>& onNumber);

} // namespace UsageModel
