// How long the program takes from its start until a panel has the image of its status item, beside a program that has
// nothing but an icon in the tray. The median of many pairs of starts.

#include <chrono>
#include <stdexcept>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "Support/Figures.h"
#include "Support/PrivateDesktop.h"
#include "Support/Processes.h"
#include "Support/UsersHome.h"

namespace {

using HarrowlaneApp::ChildProcess;
using HarrowlaneApp::StubService;

constexpr int rounds = 31;
constexpr double startsAtMost = 1.5;

// Qt's items believe no property that is not listed.
const QString introspection = QStringLiteral(R"(<node><interface name="org.kde.StatusNotifierWatcher">
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
</interface></node>)");

/// Asks each item for its image as soon as it registers.
class ImagePanel : public StubService {
public:
    explicit ImagePanel(const QDBusConnection& bus)
        : StubService(bus,
                      {.name = "org.kde.StatusNotifierWatcher",
                       .path = "/StatusNotifierWatcher",
                       .interface = "org.kde.StatusNotifierWatcher"},
                      [this](const QDBusMessage& message) { return replyTo(message); }),
          desktop_(bus) {}

    [[nodiscard]] bool hasImage() const { return hasImage_; }
    void forget() { hasImage_ = false; }

private:
    std::optional<Reply> replyTo(const QDBusMessage& message) {
        if (message.member() == "Introspect") return Reply{.values = {introspection}};
        if (message.member() != "RegisterStatusNotifierItem")
            return Reply{.values = {QVariant::fromValue(QDBusVariant(true))}};
        fetchImage(message.service());
        return Reply{};
    }

    void fetchImage(const QString& item) {
        QDBusMessage question =
            QDBusMessage::createMethodCall(item, "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get");
        question << "org.kde.StatusNotifierItem"
                 << "IconPixmap";
        auto* call = new QDBusPendingCallWatcher(desktop_.asyncCall(question), this);
        connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
            const QDBusPendingReply<QDBusVariant> reply = *call;
            call->deleteLater();
            hasImage_ = reply.isValid() && !reply.value().variant().value<QDBusArgument>().atEnd();
        });
    }

    QDBusConnection desktop_;
    bool hasImage_ = false;
};

double secondsToImage(const ChildProcess::Start& start, ImagePanel& panel) {
    panel.forget();
    const auto begin = std::chrono::steady_clock::now();
    const ChildProcess program(start);
    if (!HarrowlaneApp::becomes([&] { return panel.hasImage(); })) throw std::runtime_error("no image comes");
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const Bench::UsersHome home(argv[0]);
    Bench::PrivateDesktop desktop;
    ImagePanel panel(desktop.bus().connect());
    const auto startOf = [&](const char* name) {
        return desktop.startOf(Bench::programBeside(argv[0], name), home.paths().home());
    };
    std::vector<double> ours;
    std::vector<double> empty;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        empty.push_back(secondsToImage(startOf("empty-tray"), panel));
        ours.push_back(secondsToImage(startOf("Brindlewick"), panel));
        ratios.push_back(ours.back() / empty.back());
    }
    std::printf("%12.4f ms  empty_tray\n%12.4f ms  program\n", Bench::median(empty) * 1e3, Bench::median(ours) * 1e3);
    const bool met =
        Bench::isMet({"start to the first image", Bench::median(ratios), "times an empty tray program", startsAtMost});
    return met ? 0 : 1;
}
