#include "HarrowlaneApp/Views/NowView.h"

#include <cmath>
#include <ranges>
#include <utility>

#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>
#include <QVBoxLayout>

#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Drawing/HUDGround.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/Images.h"

namespace HarrowlaneApp {

namespace {

using NowTexts::Body;
using NowTexts::Card;
using UsageGauge::StatusLineInstaller;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

constexpr int sidePadding = 12;
constexpr int cardGap = 8;
constexpr int columnBottom = 10;
/// The scroll bar stands within the padding: a card that grows moves no other one sideways.
constexpr int columnWidth = NowView::usualWidth - HUDScrollBar::thickness;
constexpr int columnRight = sidePadding - HUDScrollBar::thickness;

HelperState helperState(StatusLineInstaller::State state) {
    switch (state) {
    case StatusLineInstaller::State::installed: return HelperState::installed;
    case StatusLineInstaller::State::conflict: return HelperState::conflict;
    case StatusLineInstaller::State::notInstalled: break;
    }
    return HelperState::notInstalled;
}

NowTexts::State stateOf(const UsageStore& store) {
    return {.readiness = store.readiness(),
            .isShowingSample = store.isShowingSample(),
            .helper = helperState(store.installState())};
}

/// Qt tells a layout of changes within a child's own layout only later, and not at all while they are hidden.
void settle(QWidget& widget) {
    for (QObject* child : widget.children()) {
        if (child->isWidgetType()) settle(*static_cast<QWidget*>(child));
    }
    if (widget.layout() != nullptr) widget.layout()->activate();
}

const UsageSnapshot& shownSnapshot(const UsageStore& store) {
    return store.sampleSnapshot() ? *store.sampleSnapshot() : store.snapshot();
}

} // namespace

NowView::NowView(Setting setting, QWidget* parent)
    : HUDWidget(setting.look, parent),
      setting_(std::move(setting)),
      header_(new NowHeader(setting_.look, this)),
      scroll_(new HUDScrollArea(setting_.look, HUDScrollArea::Way::down, this)),
      footer_(nullptr),
      column_(new QWidget) {
    setAccessibleName(QStringLiteral("Brindlewick"));
    setObjectName(QStringLiteral("now"));
    buildCards();
    scroll_->setObjectName(QStringLiteral("cards"));
    scroll_->setContent(column_);
    // After the cards, so that the keyboard comes to it after them.
    footer_ = new NowFooter(setting_.look, this);
    connectControls();
    watchStore();
    read();
    resize(NowView::sizeHint());
}

void NowView::buildCards() {
    const ApplicationLook& look = setting_.look;
    session_ = new WindowCard(look);
    weekChart_ = new WeekMiniCard(look);
    weekWindow_ = new WindowCard(look);
    recommendation_ = new RecommendationRow(look);
    warmingUp_ = new WarmingUpCard(look);
    firstRun_ = new FirstRunCard(look);
    auto* cards = new QVBoxLayout(column_);
    cards->setContentsMargins(sidePadding, NowHeader::overlap, columnRight, columnBottom);
    cards->setSpacing(cardGap);
    const auto add = [&](QWidget* card, const char* name) {
        card->setObjectName(QString::fromLatin1(name));
        cards->addWidget(card);
    };
    add(session_, "sessionCard");
    add(weekChart_, "weekCard");
    add(weekWindow_, "weekWindowCard");
    add(recommendation_, "recommendation");
    add(warmingUp_, "warmingUp");
    add(firstRun_, "firstRun");
    cards->addStretch();
}

void NowView::connectControls() {
    connect(header_, &NowHeader::exited, this, [this] { setting_.store.setSampleSnapshot(std::nullopt); });
    connect(firstRun_, &FirstRunCard::onSample, this, &NowView::showSample);
    connect(weekChart_, &QAbstractButton::clicked, this, &NowView::dashboardRequested);
    connect(footer_, &NowFooter::refreshRequested, this, [this] { setting_.store.refreshNow(); });
    connect(footer_, &NowFooter::dashboardRequested, this, &NowView::dashboardRequested);
    connect(footer_, &NowFooter::settingsRequested, this, &NowView::settingsRequested);
    connect(footer_, &NowFooter::quitRequested, this, &NowView::quitRequested);
}

void NowView::watchStore() {
    const UsageStore& store = setting_.store;
    for (auto changed : {&UsageStore::snapshotChanged, &UsageStore::lastErrorChanged, &UsageStore::readinessChanged,
                         &UsageStore::sampleSnapshotChanged, &UsageStore::installStateChanged}) {
        connect(&store, changed, this, &NowView::follow);
    }
    connect(&store, &UsageStore::isRefreshingChanged, this,
            [this] { footer_->setRefreshing(setting_.store.isRefreshing()); });
    connect(&setting_.look, &ApplicationLook::changed, this, [this] { update(); });
}

/// While it is hidden nobody looks: it reads when it is shown.
void NowView::follow() {
    if (isVisible()) read();
}

void NowView::showSample() {
    setting_.store.setSampleSnapshot(setting_.sampleWeek(setting_.now()));
}

void NowView::read() {
    const UsageStore& store = setting_.store;
    const UsageSnapshot& snapshot = shownSnapshot(store);
    const NowTexts::State state = stateOf(store);
    body_ = NowTexts::body(state);
    header_->setChip(NowTexts::headerChip(state, snapshot));
    readCards(snapshot);
    warmingUp_->setVisible(body_ == Body::warmingUp);
    firstRun_->setVisible(body_ == Body::firstRun);
    if (body_ == Body::firstRun) firstRun_->setReadiness(store.readiness());
    footer_->setLine(
        NowTexts::footer({.lastError = store.lastError(), .generatedAt = snapshot.generatedAt}, setting_.calendar));
    footer_->setRefreshing(store.isRefreshing());
    settle(*column_);
    updateGeometry();
    Q_EMIT resized();
}

void NowView::readCards(const UsageSnapshot& snapshot) {
    const std::vector<Card> cards = body_ == Body::cards ? NowTexts::cards(snapshot) : std::vector<Card>();
    const auto has = [&](Card card) { return std::ranges::find(cards, card) != cards.end(); };
    const UsageModel::Date now = setting_.now();
    session_->setVisible(has(Card::session));
    if (has(Card::session)) {
        readWindow(*session_, {.meter = *NowTexts::meter(snapshot, WindowKind::session5h), .now = now});
    }
    weekChart_->setVisible(has(Card::weekChart));
    if (has(Card::weekChart)) {
        weekChart_->setWeek(WeekCopy::compact(*snapshot.weekSeries, setting_.calendar), *snapshot.weekSeries);
    }
    weekWindow_->setVisible(has(Card::weekWindow));
    if (has(Card::weekWindow)) {
        readWindow(*weekWindow_,
                   {.meter = *NowTexts::meter(snapshot, WindowKind::weeklyAll), .isWeekly = true, .now = now});
    }
    recommendation_->setVisible(has(Card::recommendation));
    if (has(Card::recommendation)) recommendation_->setRecommendation(*snapshot.recommendation);
}

void NowView::readWindow(WindowCard& card, const NowTexts::WindowCardQuestion& question) {
    card.setWindow(NowTexts::windowCard(question, setting_.calendar));
}

void NowView::setCorners(Corners corners) {
    if (corners == corners_) return;
    corners_ = corners;
    ground_ = {};
    update();
}

QSize NowView::sizeHint() const {
    const int cards =
        column_->hasHeightForWidth() ? column_->heightForWidth(columnWidth) : column_->sizeHint().height();
    return {usualWidth, header_->height() + cards + footer_->height()};
}

void NowView::resizeEvent(QResizeEvent* event) {
    HUDWidget::resizeEvent(event);
    const int below = std::max(height() - header_->height() - footer_->height(), 0);
    header_->setGeometry(0, 0, width(), header_->height());
    scroll_->setGeometry(0, header_->height(), width(), below);
    footer_->setGeometry(0, header_->height() + below, width(), footer_->height());
}

void NowView::showEvent(QShowEvent* event) {
    read();
    HUDWidget::showEvent(event);
}

void NowView::makeGround(double pixelsPerPoint) {
    const QSize pixels(static_cast<int>(std::ceil(width() * pixelsPerPoint)),
                       static_cast<int>(std::ceil(height() * pixelsPerPoint)));
    if (ground_.size() == pixels && groundLook_ == look()) return;
    groundLook_ = look();
    ground_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    ground_.fill(Qt::transparent);
    QPainter painter(&ground_);
    const double radius = corners_ == Corners::round ? cornerRadius : 0.0;
    painter.scale(pixelsPerPoint, pixelsPerPoint);
    QBrush haze(HUDGround::image(pixels, look()));
    haze.setTransform(QTransform::fromScale(1.0 / pixelsPerPoint, 1.0 / pixelsPerPoint));
    fillRounded(painter, rect(), radius, haze);
    strokeInside(painter, rect(), radius, colors().edge);
}

void NowView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const double pixelsPerPoint = painter.deviceTransform().m11();
    makeGround(pixelsPerPoint);
    painter.drawImage(QRectF(rect()), ground_);
}

QImage image(NowView& view, double scale) {
    view.read();
    view.resize(view.sizeHint());
    return Images::drawn(view.size(), scale, [&view](QPainter& painter) {
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    });
}

} // namespace HarrowlaneApp
