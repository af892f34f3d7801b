#include "HarrowlaneApp/Views/WeekHeader.h"

#include <cmath>

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

constexpr int chipDrop = 2;
constexpr int chipDistance = 16;
constexpr int detailGap = 3;
constexpr int widestDetail = 560;

} // namespace

ChipLabel::ChipLabel(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ChipLabel::setChip(const HeaderChip& chip) {
    chip_ = chip;
    setAccessibleName(chip.text);
    updateGeometry();
    update();
}

QSize ChipLabel::sizeHint() const {
    const QSizeF size = chip_.size();
    return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

void ChipLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    chip_.paint(painter, rect(), look());
}

GlyphLabel::GlyphLabel(const ApplicationLook& look, const Picture& picture, QWidget* parent)
    : HUDWidget(look, parent),
      picture_(picture) {
    setFixedSize(picture.size, picture.size);
}

void GlyphLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Glyphs::paint(painter, picture_.glyph, {.size = 1.0 * picture_.size}, colors().*picture_.color);
}

WeekHeader::WeekHeader(const ApplicationLook& look, QWidget* parent)
    : QWidget(parent),
      headline_(new HUDLabel(look, Headings::headline(), Overflow::wrap)),
      detail_(new HUDLabel(look, Headings::detail(), Overflow::wrap)),
      chip_(new ChipLabel(look)) {
    headline_->setObjectName(QStringLiteral("weekHeadline"));
    detail_->setObjectName(QStringLiteral("weekDetail"));
    detail_->setMaximumWidth(widestDetail);
    chip_->setObjectName(QStringLiteral("weekChip"));

    auto* words = new QVBoxLayout;
    words->setSpacing(detailGap);
    words->addWidget(headline_);
    // What is left of the row's width is nobody's: the headline alone takes it.
    auto* detailRow = new QHBoxLayout;
    detailRow->addWidget(detail_, 1);
    detailRow->addStretch();
    words->addLayout(detailRow);
    auto* chipColumn = new QVBoxLayout;
    chipColumn->setContentsMargins(0, chipDrop, 0, 0);
    chipColumn->addWidget(chip_);
    chipColumn->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(chipDistance);
    row->addLayout(words, 1);
    row->addLayout(chipColumn);
}

void WeekHeader::setWords(const Words& words) {
    headline_->setText(QString::fromStdString(words.headline));
    detail_->setText(QString::fromStdString(words.detail));
    const auto chip = DashboardTexts::weekChip(words.state);
    chip_->setVisible(chip.has_value());
    chip_->setChip(
        {.text = shown(chip.value_or("")), .color = words.state.isSample ? &Palette::violet : &Palette::dim});
}

GaugeBanner::GaugeBanner(const ApplicationLook& look, QWidget* parent) : PanelBox(look, 12.0, &Palette::warn, parent) {
    setObjectName(QStringLiteral("gaugeBanner"));
    auto* text = new HUDLabel(look, {.font = HUDType::text(12), .lineHeight = 17}, Overflow::wrap);
    text->setObjectName(QStringLiteral("bannerText"));
    text->setText(shown(DashboardTexts::bannerText));
    auto* button = new PushButton(look, shown(DashboardTexts::bannerButton), PushButton::Kind::plain);
    button->setObjectName(QStringLiteral("bannerButton"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(14, 11, 12, 11);
    row->setSpacing(12);
    row->addWidget(new GlyphLabel(look, {.glyph = Glyph::gauge, .size = 22, .color = &Palette::warn}));
    row->addWidget(text, 1);
    row->addWidget(button);
    connect(button, &QAbstractButton::clicked, this, &GaugeBanner::openSettings);
}

} // namespace HarrowlaneApp
