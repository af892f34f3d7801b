#include "HarrowlaneApp/Views/NowFooter.h"

#include <QHBoxLayout>
#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr int textLeft = 16;
constexpr int textGap = 8;
constexpr int buttonsRight = 8;
constexpr int hairline = 1;
constexpr int contentTop = 2;
constexpr double gearSize = 16.0;
// On black the full colour would be as loud as what the cards say.
constexpr double darkOpacity = 0.85;

} // namespace

NowFooter::NowFooter(const ApplicationLook& look, QWidget* parent)
    : HUDWidget(look, parent),
      line_(new HUDLabel(look, {.font = HUDType::text(10.5), .color = &Palette::dim, .lineHeight = 14})) {
    setFixedHeight(fullHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(textLeft, contentTop, buttonsRight, 0);
    row->setSpacing(0);
    row->addWidget(line_, 1);
    row->addSpacing(textGap);
    line_->setObjectName(QStringLiteral("footerLine"));
    refresh_ = addButton("refresh", NowTexts::refreshHelp, {.glyph = Glyph::refresh});
    connect(refresh_, &QAbstractButton::clicked, this, &NowFooter::refreshRequested);
    connect(addButton("dashboard", NowTexts::dashboardHelp, {.glyph = Glyph::chart}), &QAbstractButton::clicked, this,
            &NowFooter::dashboardRequested);
    connect(addButton("settings", NowTexts::settingsHelp, {.glyph = Glyph::gear, .size = gearSize}),
            &QAbstractButton::clicked, this, &NowFooter::settingsRequested);
    connect(addButton("quit", NowTexts::quitHelp, {.glyph = Glyph::power}), &QAbstractButton::clicked, this,
            &NowFooter::quitRequested);
    connect(&look, &ApplicationLook::changed, this, &NowFooter::styleLine);
    styleLine();
}

IconButton* NowFooter::addButton(const char* objectName, std::string_view name, const IconButton::Icon& icon) {
    auto* button = new IconButton(applicationLook(), shown(name), icon);
    button->setObjectName(QString::fromLatin1(objectName));
    layout()->addWidget(button);
    return button;
}

void NowFooter::setLine(const NowTexts::Footer& line) {
    line_->setText(shown(line.text));
    // What is cut can still be read.
    line_->setToolTip(line.isError ? wrappedToolTip(line_->text()) : QString());
    isError_ = line.isError;
    styleLine();
}

void NowFooter::styleLine() {
    const bool isMuted = !isError_ && look().appearance == Appearance::dark && !look().increaseContrast;
    line_->setStyle({.font = HUDType::text(10.5),
                     .color = isError_ ? &Palette::warn : &Palette::dim,
                     .opacity = isMuted ? darkOpacity : 1.0,
                     .lineHeight = 14});
}

void NowFooter::setRefreshing(bool refreshing) {
    refresh_->setBusy(refreshing);
}

void NowFooter::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), hairline), colors().edge);
}

} // namespace HarrowlaneApp
