#include "HarrowlaneApp/Shell/HarrowlaneApp.h"

#include <chrono>
#include <utility>

#include <QCursor>
#include <QIcon>
#include <QMessageBox>
#include <QPixmap>

#include "HarrowlaneApp/Drawing/IconArt.h"
#include "HarrowlaneApp/Platform/DesktopDisplay.h"
#include "HarrowlaneApp/Platform/Later.h"
#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Views/Accessibility.h"

namespace HarrowlaneApp {

namespace {

// By then the panel has its image, for which it asks the same thread; and nobody has clicked on it yet.
constexpr std::chrono::milliseconds popoverDelay(300);

UsageStore::World worldOf(const HarrowlaneApp::Surroundings& given) {
    UsageStore::World world = given.world;
    world.alertSettings = [&preferences = given.preferences] {
        return AlertSettings{.thresholdAlertsEnabled = preferences.thresholdAlertsEnabled()};
    };
    return world;
}

QIcon windowIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 128}) icon.addPixmap(QPixmap::fromImage(IconArt::image(side)));
    return icon;
}

void makeWindow(QWidget& view, const QString& title) {
    view.setWindowTitle(title);
    view.setWindowIcon(windowIcon());
    view.setAttribute(Qt::WA_QuitOnClose, false);
}

void bringForward(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

HarrowlaneApp::HarrowlaneApp(Surroundings surroundings)
    : given_(std::move(surroundings)),
      options_(std::make_unique<DesktopDisplay>(given_.appearance)),
      look_(given_.appearance, options_),
      appearanceController_(given_.preferences, look_),
      store_(worldOf(given_)),
      menuBarExtra_({.store = store_, .item = given_.item, .autostart = given_.autostart}) {
    installAccessibility();
    appearanceController_.applicationDidFinishLaunching();
    connectItem();
    later(*this, popoverDelay, [this] { (void)popover(); });
}

HarrowlaneApp::~HarrowlaneApp() = default;

void HarrowlaneApp::connectItem() {
    connect(&menuBarExtra_, &MenuBarExtra::openRequested, this, &HarrowlaneApp::open);
    connect(&menuBarExtra_, &MenuBarExtra::clicked, this, &HarrowlaneApp::openAt);
    connect(&menuBarExtra_, &MenuBarExtra::settingsRequested, this, &HarrowlaneApp::openSettings);
    connect(&menuBarExtra_, &MenuBarExtra::quitRequested, this, &HarrowlaneApp::quitRequested);
    connect(&menuBarExtra_, &MenuBarExtra::failed, this, [](const QString& words) {
        auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Brindlewick"), words);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setAttribute(Qt::WA_QuitOnClose, false);
        box->open();
    });
    panelGrace_.setSingleShot(true);
    panelGrace_.setInterval(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::duration<double>(panelGraceSeconds)));
    connect(&panelGrace_, &QTimer::timeout, this, [this] {
        menuBarExtra_.show(); // an item looks for some panels only when it gets a face
        if (given_.item.presence() == StatusItem::Presence::absent) showWithoutPanel();
    });
    connect(&given_.item, &StatusItem::presenceChanged, this, &HarrowlaneApp::followPresence);
    followPresence();
}

PopoverWindow& HarrowlaneApp::popover() {
    if (popover_) return *popover_;
    auto* view = new NowView({.store = store_,
                              .look = look_,
                              .calendar = given_.world.calendar,
                              .now = [clock = given_.world.clock] { return clock->now(); },
                              .sampleWeek = PreviewData::overPace});
    popover_ = std::make_unique<PopoverWindow>(view);
    popover_->setWindowIcon(windowIcon());
    connect(popover_.get(), &PopoverWindow::dashboardRequested, this, &HarrowlaneApp::openDashboard);
    connect(popover_.get(), &PopoverWindow::settingsRequested, this, &HarrowlaneApp::openSettings);
    connect(popover_.get(), &PopoverWindow::quitRequested, this, &HarrowlaneApp::quitRequested);
    return *popover_;
}

DashboardView& HarrowlaneApp::dashboard() {
    if (dashboard_) return *dashboard_;
    dashboard_ = std::make_unique<DashboardView>(
        look_, DashboardView::Surroundings{.store = store_, .calendar = given_.world.calendar});
    dashboard_->setObjectName(QStringLiteral("dashboard"));
    makeWindow(*dashboard_, QStringLiteral("Brindlewick — Dashboard"));
    dashboard_->resize(DashboardView::firstSize);
    connect(dashboard_.get(), &DashboardView::openSettings, this, &HarrowlaneApp::openSettings);
    return *dashboard_;
}

SettingsView& HarrowlaneApp::settings() {
    if (settings_) return *settings_;
    settings_ = std::make_unique<SettingsView>(
        look_, SettingsView::Surroundings{.store = store_,
                                          .preferences = given_.preferences,
                                          .settingsFile = given_.world.paths.claudeSettings()});
    settings_->setObjectName(QStringLiteral("settings"));
    makeWindow(*settings_, QStringLiteral("Brindlewick — Settings"));
    return *settings_;
}

void HarrowlaneApp::open() {
    if (given_.item.presence() == StatusItem::Presence::absent) return showWithoutPanel();
    popover().open(lastPlace_.value_or(QCursor::pos()));
}

void HarrowlaneApp::openAt(const QPoint& place) {
    panelGrace_.stop();
    // Some panels tell no place, and mean the corner of the screen by it.
    if (place.isNull()) return popover().toggle(lastPlace_.value_or(QCursor::pos()));
    lastPlace_ = place;
    popover().toggle(place);
}

void HarrowlaneApp::openDashboard() {
    bringForward(dashboard());
}

void HarrowlaneApp::openSettings() {
    bringForward(settings());
}

void HarrowlaneApp::followPresence() {
    switch (given_.item.presence()) {
    case StatusItem::Presence::pending: return;
    case StatusItem::Presence::absent: return panelGrace_.start();
    case StatusItem::Presence::shown: break;
    }
    panelGrace_.stop();
    if (popover_) popover_->leaveDesktop();
}

void HarrowlaneApp::showWithoutPanel() {
    panelGrace_.stop();
    popover().standOnDesktop();
}

} // namespace HarrowlaneApp
