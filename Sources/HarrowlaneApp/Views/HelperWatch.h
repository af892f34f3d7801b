#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include "HarrowlaneApp/Store/UsageStore.h"

namespace HarrowlaneApp {

/// Watches Claude Code's settings file, which other programs write too, and has the store look at the installation
/// again when it changes. The file and its folder may come and go.
class HelperWatch : public QObject {
    Q_OBJECT

public:
    /// Begins with a look, since much may have happened before. The store outlives it.
    HelperWatch(UsageStore& store, std::filesystem::path settingsFile, QObject* parent = nullptr);

private:
    /// What tells one state of the file from another.
    struct Stamp {
        std::filesystem::file_time_type written;
        std::uintmax_t size = 0;

        friend bool operator==(const Stamp&, const Stamp&) = default;
    };

    [[nodiscard]] std::optional<Stamp> stamp() const;
    void follow();
    void check();

    UsageStore& store_;
    std::filesystem::path file_;
    QFileSystemWatcher watcher_;
    QTimer settling_;
    std::optional<Stamp> known_;
};

} // namespace HarrowlaneApp
