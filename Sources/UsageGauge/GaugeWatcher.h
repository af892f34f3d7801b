#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

namespace UsageGauge {

/// Tells when the gauge file may have changed. Watches its folder, so the file need not exist yet, and one that is
/// replaced as a whole is still seen. Never looks into the file.
///
/// A change is an entry of the folder that appears, goes or is renamed, whatever its name, or a write to the gauge file
/// itself, told when the writer closes it. Reading is none. Nor is a write into another file that is already there: the
/// program writes its database and its alert state in this folder on every refresh, and if each of these writes asked
/// for the next refresh there would be no end.
///
/// `start` and the destructor belong to one thread; `stop` may be called on any. No thread wakes while nothing changes.
class GaugeWatcher {
public:
    /// A burst of changes gives one call, this long after its first. Later changes do not put it off, so that a steady
    /// stream still gives a call each time this span is over; a change after the call begins the next span.
    static constexpr double debounceSeconds = 0.2;

    /// `onChange` runs on the watcher's own thread, one call at a time, and must not throw. It may stop the watcher, or
    /// end its life.
    GaugeWatcher(const std::filesystem::path& fileURL, std::function<void()> onChange);
    GaugeWatcher(const GaugeWatcher&) = delete;
    GaugeWatcher& operator=(const GaugeWatcher&) = delete;
    /// Drops a call that is due and waits for one that runs (but not for the one it is called from).
    ~GaugeWatcher();

    /// Makes the folder, for the owner alone, where it is missing, and watches it: every change from now on counts.
    /// Where it cannot be watched the watcher stays silent, without a retry of its own; a later `start` is one. Once
    /// the folder is renamed or deleted, which is told as a change, the watch is dead until `stop` and a new `start`.
    /// Does nothing while started.
    void start();

    /// Ends the watch and returns at once. Changes made before still get their call, up to `debounceSeconds` later;
    /// changes made after do not. Does nothing while not started.
    void stop();

private:
    class Lookout;
    static constexpr int noWatch = -1;

    std::filesystem::path directory_;
    /// Shared with the thread, which may end after the watcher.
    std::shared_ptr<Lookout> lookout_;
    std::atomic<int> watch_ = noWatch;
    std::jthread thread_;
};

} // namespace UsageGauge
