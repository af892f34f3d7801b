#include "HarrowlaneApp/Views/HelperWatch.h"

namespace HarrowlaneApp {

namespace {

// A replaced file is two or three events.
constexpr int settlingMilliseconds = 100;

QString watched(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

} // namespace

HelperWatch::HelperWatch(UsageStore& store, std::filesystem::path settingsFile, QObject* parent)
    : QObject(parent),
      store_(store),
      file_(std::move(settingsFile)),
      known_(stamp()) {
    settling_.setSingleShot(true);
    settling_.setInterval(settlingMilliseconds);
    const auto settle = [this] { settling_.start(); };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, settle);
    connect(&settling_, &QTimer::timeout, this, &HelperWatch::check);
    // The store has looked, or has changed the file itself.
    connect(&store_, &UsageStore::installStateChanged, this, [this] { known_ = stamp(); });
    follow();
    store_.lookAtInstallation();
}

std::optional<HelperWatch::Stamp> HelperWatch::stamp() const {
    std::error_code failure;
    const auto written = std::filesystem::last_write_time(file_, failure);
    if (failure) return std::nullopt;
    const auto size = std::filesystem::file_size(file_, failure);
    if (failure) return std::nullopt;
    return Stamp{.written = written, .size = size};
}

/// A watch ends with the file or folder that it was on, so it is set anew after each change.
void HelperWatch::follow() {
    const std::filesystem::path folder = file_.parent_path();
    for (const auto& path : {file_, folder, folder.parent_path()}) {
        std::error_code ignored;
        if (std::filesystem::exists(path, ignored)) watcher_.addPath(watched(path));
    }
    // The folder above tells of a folder that is yet to come, and of nothing else.
    std::error_code ignored;
    if (std::filesystem::exists(folder, ignored)) watcher_.removePath(watched(folder.parent_path()));
}

void HelperWatch::check() {
    follow();
    const auto now = stamp();
    if (now == known_) return;
    known_ = now;
    store_.lookAtInstallation();
}

} // namespace HarrowlaneApp
