#include "HarrowlaneApp/Views/RecommendationRow.h"

#include <QPainter>

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

using HUDType::Weight;

constexpr int topPadding = 12;
constexpr int sidePadding = 14;
constexpr double tileSide = 28.0;
constexpr double tileRadius = 8.0;
constexpr double tileGlyph = 16.0;
constexpr int textGap = 11;
constexpr int footGap = 8;
constexpr int footHeight = 24;

TextStyle impactStyle(int lineHeight) {
    return {.font = HUDType::text(11.5, Weight::semibold), .color = &Palette::good, .lineHeight = lineHeight};
}

} // namespace

RecommendationRow::RecommendationRow(const ApplicationLook& look, QWidget* parent)
    : PanelBox(look, 12.0, nullptr, parent),
      icon_(new SpokenPicture(look)),
      title_(new HUDLabel(look, {.font = HUDType::text(13.5, Weight::semibold), .lineHeight = 17}, Overflow::wrap)),
      detail_(
          new HUDLabel(look, {.font = HUDType::text(11.5), .color = &Palette::dim, .lineHeight = 15}, Overflow::wrap)),
      impact_(new HUDLabel(look, impactStyle(footHeight), Overflow::wrap)),
      copy_(new CopyButton(look)),
      footBox_(new QWidget),
      foot_(new QBoxLayout(QBoxLayout::LeftToRight, footBox_)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(sidePadding, topPadding, sidePadding, topPadding);
    row->setSpacing(0);
    row->addWidget(icon_, 0, Qt::AlignTop);
    row->addSpacing(textGap);
    row->addLayout(makeColumn(), 1);
    icon_->setObjectName(QStringLiteral("adviceIcon"));
    title_->setObjectName(QStringLiteral("adviceTitle"));
    detail_->setObjectName(QStringLiteral("adviceDetail"));
    impact_->setObjectName(QStringLiteral("adviceImpact"));
    copy_->setObjectName(QStringLiteral("copyCommand"));
}

QVBoxLayout* RecommendationRow::makeColumn() {
    foot_->setContentsMargins(0, footGap, 0, 0);
    foot_->setSpacing(footGap);
    foot_->addWidget(impact_, 1);
    foot_->addWidget(copy_, 0, Qt::AlignRight);
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addSpacing(1);
    column->addWidget(title_);
    column->addSpacing(3);
    column->addWidget(detail_);
    column->addWidget(footBox_);
    column->addStretch();
    return column;
}

void RecommendationRow::setRecommendation(const UsageModel::Recommendation& rec) {
    showIcon(rec.kind);
    title_->setText(shown(rec.title));
    detail_->setText(shown(rec.detail));
    impact_->setText(shown(rec.impact));
    copy_->setCommand(shown(rec.command.value_or("")));
    copy_->setVisible(rec.command.has_value());
    footBox_->setVisible(rec.command || !rec.impact.empty());
    arrangeFoot();
}

void RecommendationRow::showIcon(UsageModel::Recommendation::Kind kind) {
    const Glyph glyph = NowTexts::adviceIcon(kind) == NowTexts::AdviceIcon::arrowUp ? Glyph::arrowUp : Glyph::lightbulb;
    icon_->setContent({.size = {tileSide, tileSide},
                       .words = {},
                       .paint = [glyph](QPainter& painter, const QRectF& rect, const Look& look) {
                           const QColor& cyan = look.palette().cyan;
                           fillRounded(painter, rect, tileRadius, withOpacity(cyan, 0.13));
                           const double inset = (tileSide - tileGlyph) / 2.0;
                           const QPointF corner = rect.topLeft() + QPointF(inset, inset);
                           Glyphs::paint(painter, glyph, {.corner = corner, .size = tileGlyph}, cyan);
                       }});
}

void RecommendationRow::arrangeFoot() {
    constexpr int wrappedLine = 15;
    const int room = cardWidth_ - 2 * sidePadding - static_cast<int>(tileSide) - textGap;
    copy_->setRoom(room);
    const int left = copy_->isHidden() ? room : room - copy_->naturalWidth() - footGap;
    const bool fits = impactStyle(footHeight).font.width(impact_->text()) <= left;
    foot_->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    impact_->setStyle(impactStyle(fits ? footHeight : wrappedLine));
}

void RecommendationRow::resizeEvent(QResizeEvent* event) {
    PanelBox::resizeEvent(event);
    cardWidth_ = width();
    arrangeFoot();
}

} // namespace HarrowlaneApp
