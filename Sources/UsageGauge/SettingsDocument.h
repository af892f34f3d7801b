#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace UsageGauge {

/// A JSON object that belongs to somebody else and is changed in single members. All other members keep their values;
/// numbers keep the very digits they were written with, whether or not any type of ours could hold them.
class SettingsDocument {
public:
    /// Objects and arrays nested deeper than this are no settings.
    static constexpr int greatestDepth = 512;

    /// The document without members.
    SettingsDocument() = default;
    /// The empty text is the empty document, and so is JSON whose top level is no object. A byte order mark is passed
    /// over; of members with one name the last counts. Throws `Json::Error` for what is no JSON, or nested too deeply.
    [[nodiscard]] static SettingsDocument parse(std::string_view text);

    [[nodiscard]] bool empty() const { return members_.empty(); }
    /// A member as JSON text. Absent where there is none.
    [[nodiscard]] std::optional<std::string> member(const std::string& name) const;
    /// Takes any JSON text, bare scalars included. Throws `Json::Error` for what is none; nothing has changed then.
    void setMember(const std::string& name, std::string_view json);
    void removeMember(const std::string& name) { members_.erase(name); }

    /// The document, one member a line, its keys sorted at all levels, ended by a line feed. Throws `Json::Error`
    /// where it could not be UTF-8.
    [[nodiscard]] std::string text() const;

private:
    [[nodiscard]] nlohmann::json masked(std::string_view json) const;
    [[nodiscard]] std::string unmasked(const std::string& json) const;

    nlohmann::json members_ = nlohmann::json::object();
    /// A control character that begins no string of the document: with it before them, numbers are held as strings.
    char mark_ = '\x01';
};

} // namespace UsageGauge
