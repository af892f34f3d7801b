#include "UsageGauge/GaugeWatcher.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <latch>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "UsageModel/Files.h"

namespace UsageGauge {

namespace {

using Clock = std::chrono::steady_clock;

// Not IN_MODIFY: an open database file is written thousands of times during an import, and each would wake the thread.
// Not IN_ATTRIB: a mode or a time stamp is no content.
constexpr std::uint32_t watchedEvents =
    IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr auto debounce =
    std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(GaugeWatcher::debounceSeconds));
constexpr std::size_t eventBufferSize = 16384;

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd_ != -1) close(fd_);
    }
    [[nodiscard]] int get() const { return fd_; }

private:
    int fd_;
};

int millisecondsTo(Clock::time_point when) {
    using std::chrono::milliseconds;
    return static_cast<int>(std::max(std::chrono::ceil<milliseconds>(when - Clock::now()), milliseconds(0)).count());
}

} // namespace

/// The kernel's queue of events and the thread's work on it. The queue outlives every single watch, and is what orders
/// `start`, `stop` and the changes between them, so that the two sides share no state that needs a lock.
class GaugeWatcher::Lookout {
public:
    Lookout(std::string fileName, std::function<void()> onChange)
        : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
          quit_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
          fileName_(std::move(fileName)),
          onChange_(std::move(onChange)) {}

    /// Whether the system gave all that a watch needs; it may give it later.
    [[nodiscard]] bool isOpen() const { return events_.get() != -1 && quit_.get() != -1; }
    [[nodiscard]] std::shared_ptr<Lookout> reopened() const { return std::make_shared<Lookout>(fileName_, onChange_); }

    /// `noWatch` where the folder cannot be watched.
    [[nodiscard]] int watch(const std::filesystem::path& directory) const {
        // A thread that cannot be told to quit must not begin.
        return !isOpen() ? noWatch : inotify_add_watch(events_.get(), directory.c_str(), watchedEvents);
    }
    /// What is already in the queue stays there. A watch that is dead is let alone.
    void unwatch(int watch) const { inotify_rm_watch(events_.get(), watch); }

    /// Lets `run` go on: not before all that a call may touch, the watcher's thread itself included, is in its place.
    void begin() { begun_.count_down(); }
    void quit() const { eventfd_write(quit_.get(), 1); }

    void run() const {
        begun_.wait();
        while (wait(std::nullopt) == Wake::events) {
            if (!takeChanges()) continue;
            if (wait(Clock::now() + debounce) == Wake::quit) return;
            // What has come in meanwhile belongs to the same burst.
            takeChanges();
            onChange_();
        }
    }

private:
    enum class Wake { events, time, quit };

    /// Waits for events, or, if a time is given, for that time alone: a burst wakes the thread once, not once a change.
    [[nodiscard]] Wake wait(std::optional<Clock::time_point> until) const {
        while (true) {
            std::array<pollfd, 2> sources{{{quit_.get(), POLLIN, 0}, {until ? -1 : events_.get(), POLLIN, 0}}};
            const int ready = poll(sources.data(), sources.size(), until ? millisecondsTo(*until) : -1);
            if (ready > 0) return sources[0].revents != 0 ? Wake::quit : Wake::events;
            if (ready == -1 && errno != EINTR) return Wake::quit;
            if (until && Clock::now() >= *until) return Wake::time;
        }
    }

    /// Empties the queue; tells whether there was a change in it.
    bool takeChanges() const {
        alignas(inotify_event) std::array<char, eventBufferSize> buffer;
        bool changed = false;
        while (true) {
            const ssize_t count = read(events_.get(), buffer.data(), buffer.size());
            if (count == -1 && errno == EINTR) continue;
            if (count <= 0) return changed;
            if (holdsChange({buffer.data(), static_cast<std::size_t>(count)})) changed = true;
        }
    }

    [[nodiscard]] bool holdsChange(std::string_view records) const {
        bool changed = false;
        while (!records.empty()) {
            const auto& event = *reinterpret_cast<const inotify_event*>(records.data());
            if (isChange(event)) changed = true;
            // The kernel would follow a renamed folder to its new place; the gauge file is not written there any more.
            if ((event.mask & IN_MOVE_SELF) != 0) unwatch(event.wd);
            records.remove_prefix(sizeof event + event.len);
        }
        return changed;
    }

    /// Events that were lost for want of room in the queue count, for they may have been changes.
    [[nodiscard]] bool isChange(const inotify_event& event) const {
        if ((event.mask & IN_IGNORED) != 0) return false;
        if ((event.mask & IN_CLOSE_WRITE) != 0) return event.len > 0 && fileName_ == event.name;
        return true;
    }

    Descriptor events_;
    Descriptor quit_;
    std::latch begun_{1};
    std::string fileName_;
    std::function<void()> onChange_;
};

GaugeWatcher::GaugeWatcher(const std::filesystem::path& fileURL, std::function<void()> onChange)
    : directory_(fileURL.has_parent_path() ? fileURL.parent_path() : "."),
      lookout_(std::make_shared<Lookout>(fileURL.filename().string(), std::move(onChange))) {}

GaugeWatcher::~GaugeWatcher() {
    lookout_->quit();
    if (thread_.get_id() == std::this_thread::get_id()) thread_.detach();
}

void GaugeWatcher::start() {
    if (watch_ != noWatch) return;
    // There is nobody to tell of a failure: a gauge that cannot be watched is still read with every refresh.
    try {
        UsageModel::createPrivateFolders(directory_);
    } catch (const std::system_error&) {
    }
    if (!lookout_->isOpen()) lookout_ = lookout_->reopened();
    watch_ = lookout_->watch(directory_);
    if (watch_ == noWatch || thread_.joinable()) return;
    try {
        thread_ = std::jthread([lookout = lookout_] { lookout->run(); });
        lookout_->begin();
    } catch (const std::system_error&) {
        stop();
    }
}

void GaugeWatcher::stop() {
    const int watch = watch_.exchange(noWatch);
    if (watch != noWatch) lookout_->unwatch(watch);
}

} // namespace UsageGauge
