#include "HarrowlaneApp/Platform/Linux/XdgAutostart.h"

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <QCoreApplication>
#include <QStandardPaths>
#include <QString>

#include "HarrowlaneApp/Platform/Desktop.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

/// A path as one word of a command: quoted as a command's argument, and that as a text of the entry.
std::string commandFor(const std::filesystem::path& program) {
    std::string command = "\"";
    for (const char letter : program.string()) {
        switch (letter) {
        case '"':
        case '`':
        case '$': command += {'\\', '\\', letter}; break;
        case '\\': command += R"(\\\\)"; break;
        case '%': command += "%%"; break;
        case '\n': command += "\\n"; break;
        case '\r': command += "\\r"; break;
        default: command += letter;
        }
    }
    return command + '"';
}

std::string entryFor(const std::filesystem::path& program) {
    return std::string("[Desktop Entry]\nType=Application\nName=") + Desktop::displayName +
           "\nExec=" + commandFor(program) + "\nIcon=" + Desktop::identifier + "\nTerminal=false\n";
}

/// Whether the text has this line, but for blanks around the name and the value.
bool hasSetting(const QString& text, const QString& name, const QString& value) {
    for (const QString& line : text.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals < 0 || line.first(equals).trimmed() != name) continue;
        if (line.sliced(equals + 1).trimmed() == value) return true;
    }
    return false;
}

} // namespace

XdgAutostart::XdgAutostart(Place place) : place_(std::move(place)) {}

XdgAutostart::Place XdgAutostart::usualPlace() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {.folder = std::filesystem::path(config.toStdString()) / "autostart",
            .program = QCoreApplication::applicationFilePath().toStdString()};
}

bool XdgAutostart::isEnabled() const {
    try {
        const QString text = QString::fromStdString(UsageModel::readWholeFile(entry()));
        return !hasSetting(text, QStringLiteral("Hidden"), QStringLiteral("true")) &&
               !hasSetting(text, QStringLiteral("X-GNOME-Autostart-enabled"), QStringLiteral("false"));
    } catch (const std::system_error&) {
        return false;
    }
}

void XdgAutostart::setEnabled(bool enabled) {
    if (!enabled) return UsageModel::removeFile(entry());
    UsageModel::createPrivateFolders(place_.folder);
    const std::string content = entryFor(place_.program);
    UsageModel::replaceFile({.file = entry(), .temporary = entry().string() + ".new", .content = content});
}

std::filesystem::path XdgAutostart::entry() const {
    return place_.folder / (std::string(Desktop::identifier) + ".desktop");
}

} // namespace HarrowlaneApp
