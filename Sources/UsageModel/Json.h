#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <nlohmann/json.hpp>

#include "UsageModel/Date.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/SharedText.h"

/// The JSON forms of the records: keys are the fields' names, an enumeration is its text form, an instant is seconds
/// since 1970, an absent optional is left out, a dictionary keyed by an enumeration is an object keyed by text forms.
namespace UsageModel::Json {

/// Text that is no JSON, or JSON that is not the record asked for.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Parses one JSON text. Throws `Error` on anything else, a byte order mark and trailing text included.
[[nodiscard]] nlohmann::json parse(std::string_view text);

/// One line of JSON; text that is not UTF-8 gets replacement characters.
[[nodiscard]] std::string toText(const nlohmann::json& json);

/// The value as a 64-bit integer: an integral number, also one written as "1000.0". Throws `Error` on anything else.
[[nodiscard]] std::int64_t toInteger(const nlohmann::json& json);

// Without the test for a class, clang 14 takes an enumeration for a record.
template <typename T>
concept Record = std::is_class_v<T> && requires(T& record) {
    visitFields(record, [](const char*, auto&) {});
};

namespace detail {

template <typename T>
struct Form; // how a field of type T is written and read

template <typename T>
struct Form<std::optional<T>>;

template <typename T>
void encodeField(nlohmann::json& object, const char* name, const T& field) {
    object[name] = Form<T>::encode(field);
}

template <typename T>
void encodeField(nlohmann::json& object, const char* name, const std::optional<T>& field) {
    if (field) object[name] = Form<T>::encode(*field);
}

template <typename T>
void decodeField(const nlohmann::json& object, const char* name, T& field) {
    const auto member = object.find(name);
    if (member == object.end()) throw Error(std::string("no member ") + name);
    field = Form<T>::decode(*member);
}

template <typename T>
void decodeField(const nlohmann::json& object, const char* name, std::optional<T>& field) {
    const auto member = object.find(name);
    field = member == object.end() || member->is_null() ? std::nullopt : std::optional<T>(Form<T>::decode(*member));
}

inline void require(bool holds, const char* what) {
    if (!holds) throw Error(what);
}

template <Record T>
struct Form<T> {
    static nlohmann::json encode(const T& record) {
        nlohmann::json object = nlohmann::json::object();
        visitFields(record, [&](const char* name, const auto& field) { encodeField(object, name, field); });
        return object;
    }
    static T decode(const nlohmann::json& json) {
        require(json.is_object(), "not an object");
        T record{};
        visitFields(record, [&](const char* name, auto& field) { decodeField(json, name, field); });
        return record;
    }
};

template <>
struct Form<bool> {
    static nlohmann::json encode(bool value) { return value; }
    static bool decode(const nlohmann::json& json) {
        require(json.is_boolean(), "not a boolean");
        return json.get<bool>();
    }
};

template <>
struct Form<std::int64_t> {
    static nlohmann::json encode(std::int64_t value) { return value; }
    static std::int64_t decode(const nlohmann::json& json) { return toInteger(json); }
};

template <>
struct Form<double> {
    static nlohmann::json encode(double value) { return value; }
    static double decode(const nlohmann::json& json) {
        require(json.is_number(), "not a number");
        return json.get<double>();
    }
};

template <>
struct Form<Date> {
    static nlohmann::json encode(Date value) { return value.secondsSince1970; }
    static Date decode(const nlohmann::json& json) { return Date{Form<double>::decode(json)}; }
};

template <>
struct Form<std::string> {
    static nlohmann::json encode(const std::string& value) { return value; }
    static std::string decode(const nlohmann::json& json) {
        require(json.is_string(), "not a string");
        return json.get<std::string>();
    }
};

template <>
struct Form<SharedText> {
    static nlohmann::json encode(const SharedText& value) { return std::string(value.view()); }
    static SharedText decode(const nlohmann::json& json) { return SharedText(Form<std::string>::decode(json)); }
};

template <NamedEnum E>
struct Form<E> {
    static nlohmann::json encode(E value) { return std::string(text(value)); }
    static E decode(const nlohmann::json& json) {
        const std::optional<E> value = fromText<E>(Form<std::string>::decode(json));
        require(value.has_value(), "not a name of the enumeration");
        return *value;
    }
};

template <typename T>
struct Form<std::vector<T>> {
    static nlohmann::json encode(const std::vector<T>& values) {
        nlohmann::json array = nlohmann::json::array();
        for (const T& value : values) array.push_back(Form<T>::encode(value));
        return array;
    }
    static std::vector<T> decode(const nlohmann::json& json) {
        require(json.is_array(), "not an array");
        std::vector<T> values;
        values.reserve(json.size());
        for (const auto& element : json) values.push_back(Form<T>::decode(element));
        return values;
    }
};

template <NamedEnum Key, typename T>
struct Form<EnumMap<Key, T>> {
    static nlohmann::json encode(const EnumMap<Key, T>& map) {
        nlohmann::json object = nlohmann::json::object();
        for (const auto& [key, value] : map) object[std::string(text(key))] = Form<T>::encode(value);
        return object;
    }
    static EnumMap<Key, T> decode(const nlohmann::json& json) {
        require(json.is_object(), "not an object");
        EnumMap<Key, T> map;
        for (const auto& [name, value] : json.items()) map.set(Form<Key>::decode(name), Form<T>::decode(value));
        return map;
    }
};

template <typename T>
struct Form<std::map<std::string, T>> {
    static nlohmann::json encode(const std::map<std::string, T>& map) {
        nlohmann::json object = nlohmann::json::object();
        for (const auto& [name, value] : map) object[name] = Form<T>::encode(value);
        return object;
    }
    static std::map<std::string, T> decode(const nlohmann::json& json) {
        require(json.is_object(), "not an object");
        std::map<std::string, T> map;
        for (const auto& [name, value] : json.items()) map.emplace(name, Form<T>::decode(value));
        return map;
    }
};

} // namespace detail

template <typename T>
[[nodiscard]] nlohmann::json encode(const T& value) {
    return detail::Form<T>::encode(value);
}

/// Throws `Error` where a member that is not optional is missing, or any member has the wrong type. Members that the
/// record does not have are ignored; null counts as absent for an optional.
template <typename T>
[[nodiscard]] T decode(const nlohmann::json& json) {
    return detail::Form<T>::decode(json);
}

/// Parses and decodes; absent where either fails.
template <typename T>
[[nodiscard]] std::optional<T> decodeText(std::string_view text) {
    try {
        return decode<T>(parse(text));
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace UsageModel::Json
