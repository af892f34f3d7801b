#include "HarrowlaneApp/Platform/Linux/BusNotificationService.h"

#include <algorithm>

#include "HarrowlaneApp/Platform/BannerDelay.h"
#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Platform/Linux/Bus.h"

namespace HarrowlaneApp {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr uchar normalUrgency = 1;
constexpr uchar criticalUrgency = 2;
constexpr int servicesOwnTime = -1;

QDBusMessage serviceCall(const QString& method) {
    return QDBusMessage::createMethodCall(service, objectPath, service, method);
}

QVariantMap hintsOf(const Banner& banner) {
    const bool critical = banner.urgency == Banner::Urgency::timeSensitive;
    return {{QStringLiteral("urgency"), QVariant::fromValue(critical ? criticalUrgency : normalUrgency)},
            {QStringLiteral("sound-name"), critical ? QStringLiteral("dialog-warning") : QStringLiteral("message")},
            {QStringLiteral("desktop-entry"), QString::fromLatin1(Desktop::identifier)}};
}

std::string wordsOf(const QDBusMessage& error) {
    const QString words = error.errorMessage().isEmpty() ? error.errorName() : error.errorMessage();
    return words.toStdString();
}

} // namespace

BusNotificationService::BusNotificationService(QDBusConnection bus, QObject* parent)
    : QObject(parent),
      bus_(std::move(bus)) {
    listen();
}

void BusNotificationService::listen() {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(service);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &BusNotificationService::forgetService);
    bus_.connect(service, objectPath, service, QStringLiteral("NotificationClosed"), this,
                 SLOT(forgetClosed(uint, uint)));
}

/// A service takes its banners with it, and the next one has other numbers and abilities.
void BusNotificationService::forgetService() {
    shown_.clear();
    readsMarkup_.reset();
}

void BusNotificationService::forgetClosed(uint id, uint) {
    std::erase_if(shown_, [id](const auto& shown) { return shown.second == id; });
}

void BusNotificationService::requestAuthorization(std::function<void(const PermissionAnswer&)> answer) {
    if (!bus_.isConnected()) {
        if (answer) answer({.granted = false, .error = "there is no session bus"});
        return;
    }
    authorizationStatus([answer = std::move(answer)](AuthorizationStatus status) {
        if (answer) answer({.granted = allowsBanners(status), .error = std::nullopt});
    });
}

void BusNotificationService::authorizationStatus(std::function<void(AuthorizationStatus)> answer) {
    const auto tell = [answer = std::move(answer)](bool canShow) {
        if (answer) answer(canShow ? AuthorizationStatus::authorized : AuthorizationStatus::notDetermined);
    };
    QDBusMessage hasOwner = Bus::busCall(QStringLiteral("NameHasOwner"));
    hasOwner << service;
    Bus::call(bus_, {.message = hasOwner}, *this, [this, tell](const QDBusMessage& owned) {
        if (Bus::firstOf<bool>(owned)) return tell(true);
        Bus::call(bus_, {.message = Bus::busCall(QStringLiteral("ListActivatableNames"))}, *this,
                  [tell](const QDBusMessage& names) { tell(Bus::firstOf<QStringList>(names).contains(service)); });
    });
}

void BusNotificationService::post(const Banner& banner, std::function<void(const std::optional<std::string>&)> answer) {
    if (!(banner.delaySeconds > 0.0)) return enqueue({.banner = banner, .answer = std::move(answer)});
    afterDelay(*this, banner, [this, banner] { enqueue({.banner = banner, .answer = {}}); });
    if (answer) answer(std::nullopt);
}

void BusNotificationService::delivered(std::function<void(const std::vector<std::string>&)> answer) {
    std::vector<std::string> identifiers;
    std::ranges::transform(shown_, std::back_inserter(identifiers), &std::pair<std::string, uint>::first);
    if (answer) answer(identifiers);
}

void BusNotificationService::enqueue(Posting posting) {
    queue_.push_back(std::move(posting));
    if (queue_.size() == 1) begin();
}

void BusNotificationService::begin() {
    if (readsMarkup_)
        notify();
    else
        askCapabilities();
}

void BusNotificationService::askCapabilities() {
    Bus::call(bus_, {.message = serviceCall(QStringLiteral("GetCapabilities"))}, *this,
              [this](const QDBusMessage& reply) {
                  // A service that hangs here would hang at the banner too.
                  if (Bus::isError(reply)) return finish(wordsOf(reply));
                  readsMarkup_ = Bus::firstOf<QStringList>(reply).contains(QStringLiteral("body-markup"));
                  notify();
              });
}

void BusNotificationService::notify() {
    Bus::call(bus_, {.message = notifyCall(queue_.front().banner)}, *this, [this](const QDBusMessage& reply) {
        if (Bus::isError(reply)) return finish(wordsOf(reply));
        keep(queue_.front().banner.identifier, Bus::firstOf<uint>(reply));
        finish(std::nullopt);
    });
}

void BusNotificationService::finish(const std::optional<std::string>& error) {
    const Posting posting = std::move(queue_.front());
    queue_.pop_front();
    if (!queue_.empty()) begin();
    if (posting.answer) posting.answer(error);
}

QDBusMessage BusNotificationService::notifyCall(const Banner& banner) const {
    const auto earlier = std::ranges::find(shown_, banner.identifier, &std::pair<std::string, uint>::first);
    const uint replaces = earlier == shown_.end() ? 0 : earlier->second;
    const QString body = QString::fromStdString(banner.body);
    QDBusMessage message = serviceCall(QStringLiteral("Notify"));
    message << QString::fromLatin1(Desktop::displayName) << replaces << QString::fromLatin1(Desktop::identifier)
            << QString::fromStdString(banner.title) << (readsMarkup_.value_or(false) ? body.toHtmlEscaped() : body)
            << QStringList() << hintsOf(banner) << servicesOwnTime;
    return message;
}

void BusNotificationService::keep(const std::string& identifier, uint id) {
    std::erase_if(shown_, [&](const auto& shown) { return shown.first == identifier || shown.second == id; });
    shown_.emplace_back(identifier, id);
}

} // namespace HarrowlaneApp
