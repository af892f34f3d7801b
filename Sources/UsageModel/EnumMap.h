#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <utility>

#include "UsageModel/EnumText.h"

namespace UsageModel {

/// A dictionary keyed by an enumeration: a fixed array that knows an absent key from a zero and walks its entries
/// in the enumeration's order, so that sums over it do not depend on the order of insertion.
template <NamedEnum Key, typename Value>
class EnumMap {
public:
    /// Walks the keys that are present; yields pairs of key and value by copy.
    class Iterator {
    public:
        using value_type = std::pair<Key, Value>;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;
        using pointer = void;
        using reference = value_type;

        Iterator(const EnumMap& map, std::size_t index) : map_(&map), index_(index) { skipAbsent(); }
        value_type operator*() const { return {static_cast<Key>(index_), *map_->slots_[index_]}; }
        Iterator& operator++() {
            ++index_;
            skipAbsent();
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.index_ == b.index_; }

    private:
        void skipAbsent() {
            while (index_ < caseCount<Key> && !map_->slots_[index_]) ++index_;
        }

        const EnumMap* map_;
        std::size_t index_;
    };

    EnumMap() = default;
    EnumMap(std::initializer_list<std::pair<Key, Value>> entries) {
        for (const auto& [key, value] : entries) set(key, value);
    }

    [[nodiscard]] bool contains(Key key) const { return slots_[caseIndex(key)].has_value(); }
    [[nodiscard]] const std::optional<Value>& find(Key key) const { return slots_[caseIndex(key)]; }
    [[nodiscard]] Value valueOr(Key key, Value fallback) const { return find(key).value_or(std::move(fallback)); }

    void set(Key key, Value value) { slots_[caseIndex(key)] = std::move(value); }
    /// The value of `key`, made as `Value{}` first where the key is absent.
    Value& operator[](Key key) {
        auto& slot = slots_[caseIndex(key)];
        if (!slot) slot.emplace();
        return *slot;
    }

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(std::distance(begin(), end())); }
    [[nodiscard]] bool empty() const { return begin() == end(); }
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, caseCount<Key>}; }

    friend bool operator==(const EnumMap&, const EnumMap&) = default;

private:
    std::array<std::optional<Value>, caseCount<Key>> slots_{};
};

/// The sum of the values, added in the enumeration's order; 0 for an empty map.
template <NamedEnum Key>
double sumOfValues(const EnumMap<Key, double>& map) {
    double sum = 0.0;
    for (const auto& [key, value] : map) sum += value;
    return sum;
}

} // namespace UsageModel
