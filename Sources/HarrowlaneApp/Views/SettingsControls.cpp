#include "HarrowlaneApp/Views/SettingsControls.h"

#include <cmath>

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

using SettingsTexts::BadgeIcon;
using SettingsTexts::BadgeTone;

constexpr double glyphSize = 14.0;
constexpr double glyphGap = 5.0;
constexpr int badgeHeight = 16;
constexpr double knob = 16.0;
constexpr int segmentPadding = 10;
constexpr int segmentHeight = 22;

HUDFont badgeFont() {
    return HUDType::text(11.5, HUDType::Weight::semibold);
}

HUDFont segmentFont(bool isChosen) {
    return HUDType::text(11.5, isChosen ? HUDType::Weight::semibold : HUDType::Weight::medium);
}

Glyph glyphOf(BadgeIcon icon) {
    switch (icon) {
    case BadgeIcon::sealCheck: return Glyph::sealCheck;
    case BadgeIcon::warning: return Glyph::warning;
    case BadgeIcon::bellSlash: return Glyph::bellSlash;
    case BadgeIcon::dashedCircle: break;
    }
    return Glyph::dashedCircle;
}

const QColor& colorOf(BadgeTone tone, const Palette& colors) {
    switch (tone) {
    case BadgeTone::good: return colors.good;
    case BadgeTone::caution: return colors.warnHot;
    case BadgeTone::secondary: break;
    }
    return colors.dim;
}

} // namespace

SettingsBadge::SettingsBadge(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SettingsBadge::setBadge(const SettingsTexts::Badge& badge) {
    badge_ = badge;
    setAccessibleName(shown(badge.text));
    updateGeometry();
    update();
}

QSize SettingsBadge::sizeHint() const {
    return {static_cast<int>(std::ceil(glyphSize + glyphGap + badgeFont().width(shown(badge_.text)))), badgeHeight};
}

void SettingsBadge::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor& color = colorOf(badge_.tone, colors());
    Glyphs::paint(painter, glyphOf(badge_.icon), {.corner = {0, (height() - glyphSize) / 2.0}, .size = glyphSize},
                  color);
    painter.setPen(color);
    badgeFont().draw(painter, {.left = glyphSize + glyphGap, .height = 1.0 * height()}, shown(badge_.text));
}

SwitchButton::SwitchButton(const ApplicationLook& look, const QString& text, QWidget* parent)
    : HUDButton(look, text, parent),
      on_(new Fade(*this)) {
    setCheckable(true);
    connect(this, &QAbstractButton::toggled, this, [this](bool on) { on_->set(on); });
}

FocusRing::Outline SwitchButton::outline() const {
    return {.box = rect(), .radius = height() / 2.0};
}

void SwitchButton::paintFace(QPainter& painter) {
    const bool isDark = colors().appearance == Appearance::dark;
    const double radius = height() / 2.0;
    const double inset = (height() - knob) / 2.0;
    const QColor off = withOpacity(colors().ink, isDark ? 0.16 : 0.20);
    fillRounded(painter, rect(), radius, mixed(off, colors().cyan, on_->value()));
    fillRounded(painter, rect(), radius, withOpacity(colors().ink, 0.06 * hovered() + 0.06 * pressed()));
    const QColor knobOff = isDark ? withOpacity(colors().ink, 0.88) : QColor(Qt::white);
    const QColor knobOn = isDark ? colors().ground : QColor(Qt::white);
    const double left = inset + on_->value() * (width() - knob - 2.0 * inset);
    fillRounded(painter, {left, inset, knob, knob}, knob / 2.0, mixed(knobOff, knobOn, on_->value()));
}

SegmentButton::SegmentButton(const ApplicationLook& look, const QString& text, QWidget* parent)
    : HUDButton(look, text, parent) {
    setCheckable(true);
    setAutoExclusive(true);
}

QSize SegmentButton::sizeHint() const {
    // As wide as when chosen: a choice moves nothing.
    return {static_cast<int>(std::ceil(segmentFont(true).width(text()))) + 2 * segmentPadding, segmentHeight};
}

FocusRing::Outline SegmentButton::outline() const {
    return {.box = rect(), .radius = 6.0};
}

void SegmentButton::paintFace(QPainter& painter) {
    if (isChecked()) {
        fillRounded(painter, rect(), 6.0, colors().cardRaised);
        strokeInside(painter, rect(), 6.0, colors().edgeStrong, look().increaseContrast ? 1.5 : 1.0);
    } else {
        fillRounded(painter, rect(), 6.0, withOpacity(colors().ink, std::max(0.06 * hovered(), 0.12 * pressed())));
    }
    painter.setPen(isChecked() ? colors().ink : colors().dim);
    const HUDFont font = segmentFont(isChecked());
    font.draw(painter, {.left = (width() - font.width(text())) / 2.0, .height = 1.0 * height()}, text());
}

SegmentedPicker::SegmentedPicker(const ApplicationLook& look, const std::vector<QString>& choices, QWidget* parent)
    : HUDWidget(look, parent),
      group_(new QButtonGroup(this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2, 2, 2, 2);
    row->setSpacing(0);
    for (const QString& choice : choices) {
        auto* segment = new SegmentButton(look, choice);
        group_->addButton(segment, static_cast<int>(group_->buttons().size()));
        row->addWidget(segment);
    }
    // Not the click: a screen reader chooses without one.
    connect(group_, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (isChosen) Q_EMIT picked(index);
    });
}

int SegmentedPicker::chosen() const {
    return group_->checkedId();
}

void SegmentedPicker::choose(int index) {
    if (QAbstractButton* segment = group_->button(index)) segment->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), 8.0, colors().trackFill);
}

} // namespace HarrowlaneApp
