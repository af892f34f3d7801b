#include "HarrowlaneApp/Views/SettingsView.h"

#include <QDesktopServices>
#include <QUrl>
#include <QVBoxLayout>

#include "HarrowlaneApp/Views/AppearanceController.h"
#include "HarrowlaneApp/Views/HUDScrollArea.h"
#include "HarrowlaneApp/Views/PanelBox.h"
#include "HarrowlaneApp/Views/ProseLabel.h"

namespace HarrowlaneApp {

namespace {

using SettingsTexts::Permission;

constexpr int rowHeight = 22;
constexpr int leastSectionGap = 6;
constexpr double disabledTextOpacity = 0.45;

HelperState helperState(UsageGauge::StatusLineInstaller::State state) {
    using State = UsageGauge::StatusLineInstaller::State;
    switch (state) {
    case State::installed: return HelperState::installed;
    case State::conflict: return HelperState::conflict;
    case State::notInstalled: break;
    }
    return HelperState::notInstalled;
}

Permission permissionOf(AuthorizationStatus status) {
    switch (status) {
    case AuthorizationStatus::denied: return Permission::denied;
    case AuthorizationStatus::authorized: return Permission::authorized;
    case AuthorizationStatus::provisional: return Permission::provisional;
    default: return Permission::undetermined;
    }
}

TextStyle titleStyle() {
    return {.font = HUDType::text(12.5, HUDType::Weight::semibold), .lineHeight = 16};
}

TextStyle rowStyle(double opacity = 1.0) {
    return {.font = HUDType::text(12, HUDType::Weight::medium), .opacity = opacity, .lineHeight = rowHeight};
}

TextStyle smallStyle(QColor Palette::*color) {
    return {.font = HUDType::text(11), .color = color, .lineHeight = 15};
}

HUDLabel* label(const ApplicationLook& look, const TextStyle& style, std::string_view text,
                Overflow overflow = Overflow::elide) {
    auto* made = new HUDLabel(look, style, overflow);
    made->setText(shown(text));
    return made;
}

/// A row with something at its left end and something at its right end.
void addRow(QVBoxLayout& column, HUDLabel* name, QWidget* control) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(name, 1);
    row->addWidget(control);
    column.addLayout(row);
}

void addDivider(QVBoxLayout& column, const ApplicationLook& look) {
    column.addSpacing(6);
    column.addWidget(new Divider(look));
    column.addSpacing(4);
}

std::vector<QString> appearanceLabels() {
    std::vector<QString> labels;
    labels.reserve(UsageModel::allCases<AppearancePreference>.size());
    for (const auto preference : UsageModel::allCases<AppearancePreference>) labels.push_back(shown(label(preference)));
    return labels;
}

template <typename Widget>
Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

void openSystemSettings() {
    QDesktopServices::openUrl(QUrl(QStringLiteral("x-apple.systempreferences:com.apple.preference.notifications")));
}

SettingsView::SettingsView(const ApplicationLook& look, Surroundings surroundings, QWidget* parent)
    : GroundView(look, parent),
      given_(std::move(surroundings)) {
    setObjectName(QStringLiteral("settingsView"));
    setFixedSize(fixedSize);
    auto* content = new QWidget;
    auto* form = new QVBoxLayout(content);
    form->setContentsMargins(12, 12, 12 - HUDScrollBar::thickness, 14);
    form->setSpacing(0);
    addGaugeSection(*form);
    addAppearanceSection(*form);
    addNotificationsSection(*form);
    addPollingSection(*form);

    auto* scroll = new HUDScrollArea(look, HUDScrollArea::Way::down, this);
    scroll->setObjectName(QStringLiteral("settingsScroll"));
    scroll->setContent(content);
    scroll->setGeometry(QRect(QPoint(), fixedSize));

    connect(&given_.store, &UsageStore::installStateChanged, this, &SettingsView::showHelper);
    connect(&given_.store, &UsageStore::lastErrorChanged, this, &SettingsView::showError);
    connect(&given_.store, &UsageStore::notificationAuthorizationChanged, this, &SettingsView::showPermission);
    connect(&given_.preferences, &Preferences::changed, this, &SettingsView::showPreferences);
    showHelper();
    showError();
    showPermission();
    showPreferences();
}

QVBoxLayout* SettingsView::addSection(QVBoxLayout& form, std::string_view title) {
    if (form.count() > 0) {
        form.addSpacing(leastSectionGap);
        form.addStretch();
    }
    auto* titleRow = new QHBoxLayout;
    titleRow->setContentsMargins(12, 0, 12, 0);
    titleRow->addWidget(label(applicationLook(), titleStyle(), title));
    form.addLayout(titleRow);
    form.addSpacing(4);
    auto* panel = new PanelBox(applicationLook(), 10.0);
    panel->setAccessibleName(shown(title));
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(12, 9, 12, 9);
    column->setSpacing(0);
    form.addWidget(panel);
    return column;
}

void SettingsView::addGaugeSection(QVBoxLayout& form) {
    const ApplicationLook& look = applicationLook();
    QVBoxLayout& column = *addSection(form, SettingsTexts::gaugeSection);
    column.addWidget(named(new ProseLabel(look, shown(SettingsTexts::gaugeText)), "gaugeText"));
    addDivider(column, look);
    helperBadge_ = named(new SettingsBadge(look), "helperBadge");
    addRow(column, label(look, rowStyle(), SettingsTexts::statusRow), helperBadge_);
    column.addSpacing(5);

    helperButton_ = named(new PushButton(look, QString(), PushButton::small), "helperButton");
    helperText_ = named(new HUDLabel(look, smallStyle(&Palette::dim)), "helperText");
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(helperButton_);
    row->addWidget(helperText_, 1);
    column.addLayout(row);
    error_ = named(new HUDLabel(look, smallStyle(&Palette::warn), Overflow::wrap), "settingsError");
    errorRow_ = new QWidget;
    auto* errorColumn = new QVBoxLayout(errorRow_);
    errorColumn->setContentsMargins(0, 4, 0, 0);
    errorColumn->addWidget(error_);
    column.addWidget(errorRow_);
    connect(helperButton_, &QAbstractButton::clicked, this, &SettingsView::changeHelper);
}

void SettingsView::addAppearanceSection(QVBoxLayout& form) {
    const ApplicationLook& look = applicationLook();
    QVBoxLayout& column = *addSection(form, SettingsTexts::appearanceSection);
    appearance_ = named(new SegmentedPicker(look, appearanceLabels()), "appearancePicker");
    appearance_->setAccessibleName(shown(SettingsTexts::appearancePicker));
    addRow(column, label(look, rowStyle(), SettingsTexts::appearancePicker), appearance_);
    column.addSpacing(5);
    column.addWidget(new ProseLabel(look, shown(SettingsTexts::appearanceText)));
    connect(appearance_, &SegmentedPicker::picked, this, [this](int index) {
        const auto preference = UsageModel::allCases<AppearancePreference>[static_cast<std::size_t>(index)];
        // What is shown is not what is decided: a preference that means nothing is left alone.
        if (preference == currentAppearance(given_.preferences)) return;
        given_.preferences.setAppearancePreference(shown(UsageModel::text(preference)));
    });
}

void SettingsView::addNotificationsSection(QVBoxLayout& form) {
    const ApplicationLook& look = applicationLook();
    QVBoxLayout& column = *addSection(form, SettingsTexts::notificationsSection);
    alerts_ = named(new SwitchButton(look, shown(SettingsTexts::alertsToggle)), "alertsSwitch");
    addRow(column, label(look, rowStyle(), SettingsTexts::alertsToggle), alerts_);
    column.addSpacing(3);
    column.addWidget(new ProseLabel(look, shown(SettingsTexts::alertsText)));
    addDivider(column, look);
    permissionBadge_ = named(new SettingsBadge(look), "permissionBadge");
    addRow(column, label(look, rowStyle(), SettingsTexts::permissionRow), permissionBadge_);
    column.addSpacing(5);

    testButton_ = named(new PushButton(look, shown(SettingsTexts::testButton), PushButton::small), "testButton");
    systemButton_ = named(new PushButton(look, shown(SettingsTexts::systemSettingsButton), PushButton::small),
                          "systemSettingsButton");
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(testButton_);
    row->addWidget(systemButton_);
    row->addStretch();
    column.addLayout(row);
    connect(alerts_, &QAbstractButton::toggled, this, [this](bool on) {
        if (on != given_.preferences.thresholdAlertsEnabled()) given_.preferences.setThresholdAlertsEnabled(on);
    });
    connect(testButton_, &QAbstractButton::clicked, this, [this] { given_.store.sendTestNotification(); });
    connect(systemButton_, &QAbstractButton::clicked, this, [this] { given_.openSystemSettings(); });
}

void SettingsView::addPollingSection(QVBoxLayout& form) {
    const ApplicationLook& look = applicationLook();
    QVBoxLayout& column = *addSection(form, SettingsTexts::pollingSection);
    column.addWidget(new ProseLabel(look, shown(SettingsTexts::pollingText)));
    column.addSpacing(5);
    auto* polling = named(new SwitchButton(look, shown(SettingsTexts::pollingToggle)), "pollingSwitch");
    polling->setEnabled(false);
    addRow(column, label(look, rowStyle(disabledTextOpacity), SettingsTexts::pollingToggle), polling);
}

void SettingsView::showEvent(QShowEvent* event) {
    if (given_.settingsFile) watch_ = std::make_unique<HelperWatch>(given_.store, *given_.settingsFile);
    given_.store.refreshNotificationAuthorization();
    GroundView::showEvent(event);
}

void SettingsView::hideEvent(QHideEvent* event) {
    watch_.reset();
    GroundView::hideEvent(event);
}

void SettingsView::showHelper() {
    const SettingsTexts::HelperRows rows = SettingsTexts::helperRows(helperState(given_.store.installState()));
    helperBadge_->setBadge(rows.badge);
    helperButton_->setText(shown(rows.button));
    helperButton_->setKind(rows.isProminent ? PushButton::Kind::prominent : PushButton::Kind::plain);
    helperButton_->updateGeometry();
    helperText_->setText(shown(rows.smallText.value_or("")));
}

void SettingsView::showError() {
    const auto& words = given_.store.lastError();
    error_->setText(words ? QString::fromStdString(*words) : QString());
    errorRow_->setVisible(words.has_value());
}

void SettingsView::showPermission() {
    const auto rows = SettingsTexts::permissionRows(permissionOf(given_.store.notificationAuthorization()));
    permissionBadge_->setBadge(rows.badge);
    testButton_->setEnabled(rows.isTestEnabled);
    systemButton_->setVisible(rows.offersSystemSettings);
}

void SettingsView::showPreferences() {
    appearance_->choose(static_cast<int>(UsageModel::caseIndex(currentAppearance(given_.preferences))));
    alerts_->setChecked(given_.preferences.thresholdAlertsEnabled());
}

void SettingsView::changeHelper() {
    const auto rows = SettingsTexts::helperRows(helperState(given_.store.installState()));
    if (rows.action == SettingsTexts::HelperRows::Action::uninstall)
        given_.store.uninstallShim();
    else
        given_.store.installShim();
}

} // namespace HarrowlaneApp
