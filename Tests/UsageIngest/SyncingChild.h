#pragma once

#include <csignal>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

#include "UsageIngest/TurnLog.h"

namespace TurnLog {

/// A process that does nothing but open the database, bring it up to date with the logs and close it, until it is
/// killed; at the latest as this goes away.
class SyncingChild {
public:
    SyncingChild(const std::filesystem::path& database, const std::filesystem::path& logs) : pid_(fork()) {
        if (pid_ != 0) return;
        while (true) {
            UsageIngest::IngestStore store(database);
            syncAll(store, logs);
        }
    }
    SyncingChild(const SyncingChild&) = delete;
    SyncingChild& operator=(const SyncingChild&) = delete;
    ~SyncingChild() { killed(); }

    /// Whether it is killed by this, and did not end by itself before.
    bool killed() {
        if (pid_ <= 0) return false;
        ::kill(pid_, SIGKILL);
        int status = 0;
        const bool ended = waitpid(pid_, &status, 0) == pid_;
        pid_ = -1;
        return ended && WIFSIGNALED(status);
    }
    /// Whether all its threads stand still now.
    [[nodiscard]] bool stopped() const {
        int status = 0;
        return ::kill(pid_, SIGSTOP) == 0 && waitpid(pid_, &status, WUNTRACED) == pid_ && WIFSTOPPED(status);
    }
    void goOn() const { ::kill(pid_, SIGCONT); }

private:
    pid_t pid_ = -1;
};

} // namespace TurnLog
