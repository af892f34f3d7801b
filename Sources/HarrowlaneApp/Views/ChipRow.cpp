#include "HarrowlaneApp/Views/ChipRow.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr int titleColumn = 236;
constexpr int rowHeight = 24;
constexpr int titleHeight = 16;
constexpr int stackGap = 6;
constexpr int chipGap = 6;
constexpr int noteGap = 8;
constexpr int chipHeight = 24;
constexpr int chipPadding = 10;
constexpr double chipRadius = 12.0;
constexpr double dot = 4.0;
constexpr double dotGap = 6.0;
constexpr double restTextOpacity = 0.72;
constexpr double restFillOpacity = 0.045;

HUDFont chipFont(bool isStrong) {
    return HUDType::text(11.5, isStrong ? HUDType::Weight::semibold : HUDType::Weight::medium);
}

} // namespace

ChipButton::ChipButton(const ApplicationLook& look, QWidget* parent) : HUDButton(look, QString(), parent) {
    setCheckable(true);
}

void ChipButton::setFace(const Face& face) {
    setChecked(face.isSelected);
    if (face == face_) return;
    face_ = face;
    setText(face.label);
    setToolTip(face.tooltip);
    setAccessibleDescription(face.tooltip);
    updateGeometry();
    update();
}

QSize ChipButton::sizeHint() const {
    // As wide as when chosen: a choice moves nothing.
    const double mark = face_.isNow ? dot + dotGap : 0.0;
    return {static_cast<int>(std::ceil(chipFont(true).width(face_.label) + mark)) + 2 * chipPadding, chipHeight};
}

FocusRing::Outline ChipButton::outline() const {
    return {.box = rect(), .radius = chipRadius};
}

void ChipButton::paintFace(QPainter& painter) {
    const bool isStrong = face_.isSelected || face_.isNow;
    const QColor& ink = colors().ink;
    if (face_.isSelected) {
        fillRounded(painter, rect(), chipRadius, face_.costsMore ? colors().crit : colors().good);
        fillRounded(painter, rect(), chipRadius, withOpacity(Qt::white, 0.16 * hovered() * (1.0 - pressed())));
        fillRounded(painter, rect(), chipRadius, withOpacity(Qt::black, 0.18 * pressed()));
    } else {
        const double fill = std::max(restFillOpacity + (0.10 - restFillOpacity) * hovered(), 0.14 * pressed());
        fillRounded(painter, rect(), chipRadius, withOpacity(ink, fill));
        const bool isEdgeStrong = face_.isNow || look().increaseContrast;
        strokeInside(painter, rect(), chipRadius, isEdgeStrong ? colors().edgeStrong : colors().edge);
    }
    const QColor text = face_.isSelected ? onAccent(colors()) : withOpacity(ink, isStrong ? 1.0 : restTextOpacity);
    const HUDFont font = chipFont(isStrong);
    const double mark = face_.isNow ? dot + dotGap : 0.0;
    double left = (width() - mark - font.width(face_.label)) / 2.0;
    if (face_.isNow) {
        const QColor color = face_.isSelected ? withOpacity(colors().ground, 0.9) : withOpacity(ink, 0.45);
        fillRounded(painter, {left, (height() - dot) / 2.0, dot, dot}, dot / 2.0, color);
        left += mark;
    }
    painter.setPen(text);
    font.draw(painter, {.left = left, .height = 1.0 * height()}, face_.label);
}

AxisRow::AxisRow(const ApplicationLook& look, std::string_view title, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new HUDLabel(look, {.font = HUDType::text(12.5, HUDType::Weight::semibold), .lineHeight = titleHeight},
                          Overflow::elide, this)),
      note_(new HUDLabel(look, {.font = HUDType::text(9.5), .color = &Palette::dim, .lineHeight = titleHeight},
                         Overflow::elide, this)) {
    title_->setText(shown(title));
    note_->setObjectName(QStringLiteral("axisNote"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void AxisRow::setNote(const QString& note) {
    note_->setText(note);
    place();
}

ChipButton* AxisRow::addChip() {
    auto* chip = new ChipButton(look_, this);
    const auto index = static_cast<int>(chips_.size());
    // Not the click: a screen reader chooses without one.
    connect(chip, &QAbstractButton::toggled, this, [this, index] {
        if (!isTakingOn_) Q_EMIT clicked(index);
    });
    chips_.push_back(chip);
    return chip;
}

void AxisRow::setChips(const std::vector<ChipButton::Face>& faces) {
    isTakingOn_ = true;
    shownChips_ = faces.size();
    while (chips_.size() < faces.size()) addChip();
    for (std::size_t index = 0; index < chips_.size(); ++index) {
        chips_[index]->setVisible(index < faces.size());
        if (index < faces.size()) chips_[index]->setFace(faces[index]);
    }
    isTakingOn_ = false;
    updateGeometry();
    place();
}

int AxisRow::chipsWidth() const {
    int width = 0;
    for (std::size_t index = 0; index < shownChips_; ++index) width += chips_[index]->sizeHint().width() + chipGap;
    return std::max(width - chipGap, 0);
}

bool AxisRow::isStacked(int width) const {
    return width < titleColumn + std::max(widestChips_, chipsWidth());
}

void AxisRow::setWidestChips(int width) {
    if (width == widestChips_) return;
    widestChips_ = width;
    updateGeometry();
    place();
}

QSize AxisRow::sizeHint() const {
    return {titleColumn + chipsWidth(), rowHeight};
}

QSize AxisRow::minimumSizeHint() const {
    return {chipsWidth(), rowHeight};
}

int AxisRow::heightForWidth(int width) const {
    return isStacked(width) ? titleHeight + stackGap + chipHeight : rowHeight;
}

void AxisRow::resizeEvent(QResizeEvent* /*event*/) {
    place();
}

void AxisRow::place() {
    const bool stacked = isStacked(width());
    const int titleTop = stacked ? 0 : (rowHeight - titleHeight) / 2;
    const int titleWidth = title_->sizeHint().width();
    const int titleRoom = stacked || shownChips_ == 0 ? width() : titleColumn - noteGap;
    title_->setGeometry(0, titleTop, titleWidth, titleHeight);
    // Both stand on one baseline.
    const auto drop = static_cast<int>(std::lround(title_->textStyle().font.baseline({.height = titleHeight}) -
                                                   note_->textStyle().font.baseline({.height = titleHeight})));
    note_->setGeometry(titleWidth + noteGap, titleTop + drop, std::max(titleRoom - titleWidth - noteGap, 0),
                       titleHeight);
    int left = stacked ? 0 : titleColumn;
    const int top = stacked ? titleHeight + stackGap : 0;
    for (std::size_t index = 0; index < shownChips_; ++index) {
        const int wide = chips_[index]->sizeHint().width();
        chips_[index]->setGeometry(left, top, wide, chipHeight);
        left += wide + chipGap;
    }
}

} // namespace HarrowlaneApp
