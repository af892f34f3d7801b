#include "UsageGauge/StatusLineInstaller.h"

#include <string>
#include <system_error>

#include <unistd.h>

#include "UsageGauge/CodeSigning.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/Json.h"

namespace UsageGauge {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using UsageModel::AppPaths;
using UsageModel::FileReplacement;

constexpr const char* statusLine = "statusLine";
constexpr fs::perms executableMode = fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                     fs::perms::others_read | fs::perms::others_exec;
constexpr fs::perms ownersMode = fs::perms::owner_read | fs::perms::owner_write;

std::string processId() {
    return std::to_string(getpid());
}

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

/// The file, there or not, that `path` stands for: people keep their settings elsewhere, and link to them.
fs::path behindLinks(fs::path path) {
    constexpr int mostLinks = 40; // as many as the system itself follows
    std::error_code ignored;
    for (int links = 0; links < mostLinks; ++links) {
        if (!fs::is_symlink(path, ignored)) return path;
        const fs::path target = fs::read_symlink(path);
        path = path.parent_path() / target;
    }
    throw fs::filesystem_error("cannot follow the links", path,
                               std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

fs::perms modeOf(const fs::path& path) {
    std::error_code error;
    const fs::perms mode = fs::status(path, error).permissions();
    return error || mode == fs::perms::unknown ? ownersMode : mode;
}

std::string dumped(const json& value) try { return value.dump(); } catch (const json::exception& error) {
    throw UsageModel::Json::Error(error.what());
}

std::optional<std::string> stringOf(const std::optional<std::string>& value) {
    if (!value || !value->starts_with('"')) return std::nullopt;
    return UsageModel::Json::parse(*value).get<std::string>();
}

/// The command of a status line, which is a string or an object with one.
std::optional<std::string> commandString(const std::optional<std::string>& value) try {
    if (!value) return std::nullopt;
    if (auto command = stringOf(value)) return command;
    return stringOf(SettingsDocument::parse(*value).member("command"));
} catch (const UsageModel::Json::Error&) {
    return std::nullopt;
}

std::string quoted(const std::string& word) {
    std::string text = "'";
    for (const char c : word) {
        if (c == '\'')
            text += R"('\'')";
        else
            text += c;
    }
    return text + "'";
}

/// The shell command that runs the shim, with the former one in its environment: nothing outside of the settings file
/// need be consulted when it runs.
std::string shimCommand(const std::string& shim, const std::optional<std::string>& prior) {
    const std::optional<std::string> wrapped = commandString(prior);
    if (!wrapped || wrapped->empty() || AppPaths::isOurShim(wrapped)) return quoted(shim);
    return "HWL_WRAPPED_STATUSLINE=" + quoted(*wrapped) + " " + quoted(shim);
}

SettingsDocument documentOrNone(const fs::path& file) try {
    return SettingsDocument::parse(UsageModel::readWholeFile(file));
} catch (const std::system_error&) {
    return {};
} catch (const UsageModel::Json::Error&) {
    return {};
}

} // namespace

StatusLineInstaller::StatusLineInstaller(std::optional<fs::path> settings, std::optional<fs::path> support)
    : settingsURL(settings ? *std::move(settings) : AppPaths().claudeSettings()),
      appSupport(support ? *std::move(support) : AppPaths().support()) {}

fs::path StatusLineInstaller::shimDestURL() const {
    return appSupport / "bin" / AppPaths::shimName;
}

fs::path StatusLineInstaller::markerFile() const {
    return appSupport / "statusline-install.json";
}

fs::path StatusLineInstaller::backupFile() const {
    fs::path backup = settingsURL;
    return backup += ".hwl-backup";
}

/// What was there before the first install, as JSON text.
std::optional<std::string> StatusLineInstaller::priorOf(const std::optional<InstallMarker>& old,
                                                        const SettingsDocument& settings) const {
    // A repeated install must not take the shim's own entry for the user's.
    if (old && old->installed) return old->priorStatusLineJSON;
    auto current = settings.member(statusLine);
    const auto command = commandString(current);
    if (!AppPaths::isOurShim(command)) return current;
    // An install that came to its end between settings and marker left the user's own in the backup alone.
    const auto backedUp = documentOrNone(backupFile()).member(statusLine);
    const bool isCutOff =
        !AppPaths::isOurShim(commandString(backedUp)) && command == shimCommand(shimDestURL().native(), backedUp);
    return isCutOff ? backedUp : std::nullopt;
}

StatusLineInstaller::State StatusLineInstaller::state() const {
    const auto marker = readMarker();
    if (!marker || !marker->installed) return State::notInstalled;
    const auto command = commandString(documentOrNone(settingsURL).member(statusLine));
    const bool isOurs = command && command->find(shimDestURL().native()) != std::string::npos;
    return isOurs ? State::installed : State::conflict;
}

void StatusLineInstaller::install(const fs::path& shimSource, UsageModel::Date now) const {
    copyShim(shimSource);
    signAdHocIfUnsigned(shimDestURL());

    const bool hadSettings = isThere(settingsURL);
    SettingsDocument settings = documentOrNone(settingsURL);
    if (hadSettings) backUpSettings();
    const auto old = readMarker();
    const auto prior = priorOf(old, settings);
    const json entry{{"type", "command"}, {"command", shimCommand(shimDestURL().native(), prior)}};
    settings.setMember(statusLine, dumped(entry));
    writeSettings(settings);
    writeMarker({
        .installed = true,
        .shimPath = shimDestURL().native(),
        .priorStatusLineJSON = prior,
        .createdSettings = old ? old->createdSettings : !hadSettings,
        .installedAt = now,
    });
}

void StatusLineInstaller::uninstall() const {
    const auto marker = readMarker();
    if (!marker) return;

    SettingsDocument settings = documentOrNone(settingsURL);
    settings.removeMember(statusLine);
    try {
        if (marker->priorStatusLineJSON) settings.setMember(statusLine, *marker->priorStatusLineJSON);
    } catch (const UsageModel::Json::Error&) {
        // What was remembered cannot be read: then there is none.
    }
    std::error_code ignored;
    if (settings.empty() && marker->createdSettings)
        fs::remove(settingsURL, ignored);
    else
        writeSettings(settings);
    fs::remove(markerFile(), ignored);
}

void StatusLineInstaller::writeSettings(const SettingsDocument& settings) const {
    const fs::path file = behindLinks(settingsURL);
    const std::string text = settings.text();
    UsageModel::replaceFile({
        .file = file,
        .temporary = file.parent_path() / (".settings.hwl." + processId() + ".tmp"),
        .content = text,
        .mode = isThere(file) ? modeOf(file) : ownersMode,
        .durability = FileReplacement::Durability::wholeOnDisk,
    });
}

std::optional<InstallMarker> StatusLineInstaller::readMarker() const try {
    return UsageModel::Json::decodeText<InstallMarker>(UsageModel::readWholeFile(markerFile()));
} catch (const std::system_error&) {
    return std::nullopt;
}

void StatusLineInstaller::writeMarker(const InstallMarker& marker) const {
    UsageModel::createPrivateFolders(appSupport);
    const std::string text = dumped(UsageModel::Json::encode(marker));
    UsageModel::replaceFile({
        .file = markerFile(),
        .temporary = appSupport / ("statusline-install.json." + processId() + ".tmp"),
        .content = text,
        .durability = FileReplacement::Durability::wholeOnDisk,
    });
}

// Renamed into place, so that a status line that is drawn meanwhile finds the old shim or the new one.
void StatusLineInstaller::copyShim(const fs::path& shimSource) const {
    const fs::path shim = shimDestURL();
    UsageModel::createPrivateFolders(shim.parent_path());
    const std::string program = UsageModel::readWholeFile(shimSource);
    if (fs::is_directory(shim)) fs::remove_all(shim);
    UsageModel::replaceFile({
        .file = shim,
        .temporary = shim.parent_path() / (shim.filename().string() + "." + processId() + ".tmp"),
        .content = program,
        .mode = executableMode,
    });
}

// The first backup stays for good, so it must never be half of one.
void StatusLineInstaller::backUpSettings() const try {
    const fs::path backup = backupFile();
    if (isThere(backup)) return;
    const std::string text = UsageModel::readWholeFile(settingsURL);
    UsageModel::replaceFile({
        .file = backup,
        .temporary = backup.parent_path() / (".settings.hwl." + processId() + ".backup.tmp"),
        .content = text,
        .mode = modeOf(settingsURL),
    });
} catch (const std::system_error&) {
    // A user without a backup is better off than one without the official numbers.
}

} // namespace UsageGauge
