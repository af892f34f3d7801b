#pragma once

#include <concepts>
#include <type_traits>

namespace UsageModel {

/// `Self` is `Record` or `const Record`: one listing of a record's fields serves its JSON encoder and decoder.
/// Next to each record stands `visitFields(self, visit)`, which calls `visit(name, field)` for every field in order.
template <typename Self, typename Record>
concept FieldsOf = std::same_as<std::remove_const_t<Self>, Record>;

} // namespace UsageModel
