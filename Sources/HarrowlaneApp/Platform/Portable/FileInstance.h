#pragma once

#include <filesystem>

#include <QFileSystemWatcher>
#include <QLockFile>

#include "HarrowlaneApp/Platform/SingleInstance.h"

namespace HarrowlaneApp {

/// One instance by way of a lock file, with a folder of its own for the request to show itself: the second start lays a
/// file there, and the first takes it away. A lock whose process is gone counts for nothing.
class FileInstance : public SingleInstance {
    Q_OBJECT

public:
    /// `folder` is used for nothing else; it is made where it is missing.
    explicit FileInstance(const std::filesystem::path& folder, QObject* parent = nullptr);

    [[nodiscard]] Claim claim() override;

private:
    void listen();
    void takeRequest();
    [[nodiscard]] Claim ask();

    std::filesystem::path folder_;
    std::filesystem::path request_;
    QLockFile lock_;
    QFileSystemWatcher watcher_;
};

} // namespace HarrowlaneApp
