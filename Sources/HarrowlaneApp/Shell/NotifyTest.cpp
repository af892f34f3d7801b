#include "HarrowlaneApp/Shell/NotifyTest.h"

#include <cstdio>
#include <optional>

#include <QApplication>

#include "HarrowlaneApp/Alerts/NotificationProbe.h"
#include "HarrowlaneApp/Platform/ApplicationBundle.h"
#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Store/Suspending.h"

namespace HarrowlaneApp {

namespace {

/// Waits for the one answer that an operation of the service gives, now or later.
template <typename Answer>
class Waiting {
public:
    explicit Waiting(std::function<void(std::function<void(const Answer&)>)> ask) : ask_(std::move(ask)) {}

    [[nodiscard]] static bool await_ready() { return false; }
    bool await_suspend(std::coroutine_handle<> rest) {
        ask_([this, rest](const Answer& answer) {
            answer_ = answer;
            if (suspended_) rest.resume();
        });
        suspended_ = !answer_;
        return suspended_;
    }
    Answer await_resume() { return *answer_; }

private:
    std::function<void(std::function<void(const Answer&)>)> ask_;
    std::optional<Answer> answer_;
    bool suspended_ = false;
};

using Error = std::optional<std::string>;

void printLine(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

} // namespace

QCoro::Task<> probeNotifications(NotificationService& service, Clock& clock,
                                 const std::function<void(const std::string&)>& print) {
    Waiting<PermissionAnswer> permission([&](auto answer) { service.requestAuthorization(answer); });
    print(NotificationProbe::permissionLine(co_await permission));
    Waiting<AuthorizationStatus> asked([&](auto answer) { service.authorizationStatus(answer); });
    const AuthorizationStatus status = co_await asked;
    print(NotificationProbe::statusLine(status));
    if (!allowsBanners(status)) {
        print(std::string(NotificationProbe::notAuthorized));
        co_return;
    }
    for (const NotificationProbe::Sample& sample : NotificationProbe::samples) {
        const Banner banner = NotificationProbe::banner(sample, clock.now());
        Waiting<Error> posted([&](auto answer) { service.post(banner, answer); });
        print(NotificationProbe::postLines(sample, banner, co_await posted));
    }
    co_await asleep(QCoreApplication::instance(), clock, NotificationProbe::settleSeconds);
    Waiting<std::vector<std::string>> delivered([&](auto answer) { service.delivered(answer); });
    print(NotificationProbe::deliveredLines(co_await delivered));
}

void runNotifyTest(int argc, char** argv) {
    if (!Desktop::hasDisplay()) qputenv("QT_QPA_PLATFORM", "offscreen");
    Desktop::leaveBusToSession();
    QApplication application(argc, argv);
    if (!ApplicationBundle::ofThisProcess()) return printLine(std::string(NotificationProbe::notBundled));
    const auto item = Desktop::makeStatusItem();
    const auto service = Desktop::makeNotificationService(*item);
    SystemClock clock;
    const std::function<void(const std::string&)> print = printLine;
    auto probe = probeNotifications(*service, clock, print);
    probe.then([] { QCoreApplication::quit(); });
    if (!probe.isReady()) QApplication::exec();
}

} // namespace HarrowlaneApp
