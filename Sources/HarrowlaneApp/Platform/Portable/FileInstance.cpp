#include "HarrowlaneApp/Platform/Portable/FileInstance.h"

#include <chrono>
#include <system_error>

#include <QEventLoop>

#include "HarrowlaneApp/Platform/Later.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

bool isThere(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

} // namespace

FileInstance::FileInstance(const std::filesystem::path& folder, QObject* parent)
    : SingleInstance(parent),
      folder_(folder),
      request_(folder / "show"),
      lock_(QString::fromStdString((folder / "lock").string())) {
    // However long the first one runs, its lock is not stale.
    lock_.setStaleLockTime(0);
}

SingleInstance::Claim FileInstance::claim() {
    try {
        UsageModel::createPrivateFolders(folder_);
    } catch (const std::system_error&) {
        // A folder that cannot be made holds nobody's lock.
        return Claim::first;
    }
    const bool held = !lock_.tryLock() && lock_.error() == QLockFile::LockFailedError;
    try {
        if (held) return ask();
        listen();
        // Qt leaves it to the mask of the process.
        UsageModel::makePrivate(folder_ / "lock");
    } catch (const std::system_error&) {
        // It can be neither asked nor listened in this folder.
    }
    return held ? Claim::unanswered : Claim::first;
}

void FileInstance::listen() {
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &FileInstance::takeRequest);
    watcher_.addPath(QString::fromStdString(folder_.string()));
    // One that was laid before the folder was watched; it may be left over, and then the start itself answers it.
    UsageModel::removeFile(request_);
}

void FileInstance::takeRequest() {
    if (!isThere(request_)) return;
    try {
        UsageModel::removeFile(request_);
    } catch (const std::system_error&) {
        // The other start will find that nobody answered, but it shall be answered.
    }
    Q_EMIT showRequested();
}

SingleInstance::Claim FileInstance::ask() {
    QEventLoop loop;
    QFileSystemWatcher watcher({QString::fromStdString(folder_.string())});
    connect(&watcher, &QFileSystemWatcher::directoryChanged, &loop, [this, &loop] {
        if (!isThere(request_)) loop.quit();
    });
    UsageModel::createPrivateFile(request_);
    constexpr std::chrono::milliseconds patience(static_cast<int>(answerSeconds * 1000));
    later(loop, patience, [&loop] { loop.quit(); });
    loop.exec();
    if (!isThere(request_)) return Claim::shownElsewhere;
    UsageModel::removeFile(request_);
    return Claim::unanswered;
}

} // namespace HarrowlaneApp
