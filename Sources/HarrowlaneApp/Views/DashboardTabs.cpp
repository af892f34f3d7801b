#include "HarrowlaneApp/Views/DashboardTabs.h"

#include <array>
#include <cmath>

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include "HarrowlaneApp/Copy/DashboardTexts.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

constexpr int tabHeight = 28;
constexpr double tabRadius = 7.0;
constexpr int padLeft = 12;
constexpr int padRight = 14;
constexpr int gap = 7;
constexpr int glyphSize = 14;
constexpr int distance = 2;
constexpr int padding = 3;
constexpr double barRadius = 10.0;

constexpr std::array<Glyph, 3> glyphs{Glyph::chart, Glyph::pie, Glyph::calendar};
constexpr std::array<const char*, 3> names{"weekTab", "modelsTab", "historyTab"};

HUDFont tabFont(bool isChosen) {
    return HUDType::text(12.5, isChosen ? HUDType::Weight::semibold : HUDType::Weight::medium);
}

} // namespace

TabButton::TabButton(const ApplicationLook& look, Glyph glyph, const QString& title, QWidget* parent)
    : HUDButton(look, title, parent),
      glyph_(glyph) {
    setCheckable(true);
    setAutoExclusive(true);
}

QSize TabButton::sizeHint() const {
    // As wide as when chosen: a choice moves nothing.
    return {static_cast<int>(std::ceil(tabFont(true).width(text()))) + padLeft + glyphSize + gap + padRight, tabHeight};
}

FocusRing::Outline TabButton::outline() const {
    return {.box = rect(), .radius = tabRadius};
}

void TabButton::paintFace(QPainter& painter) {
    const Palette& palette = colors();
    if (isChecked()) {
        fillRounded(painter, rect(), tabRadius, withOpacity(palette.cyan, 0.12));
        strokeInside(painter, rect(), tabRadius, withOpacity(palette.cyan, look().increaseContrast ? 0.75 : 0.34));
    } else {
        fillRounded(painter, rect(), tabRadius, withOpacity(palette.ink, std::max(0.06 * hovered(), 0.12 * pressed())));
    }
    Glyphs::paint(painter, glyph_, {.corner = QPointF(padLeft, (height() - glyphSize) / 2.0), .size = glyphSize},
                  isChecked() ? palette.cyan : palette.dim);
    painter.setPen(isChecked() ? palette.ink : palette.dim);
    const LineBox line{.left = padLeft + glyphSize + gap, .height = 1.0 * height()};
    tabFont(isChecked()).draw(painter, line, text());
}

DashboardTabs::DashboardTabs(const ApplicationLook& look, QWidget* parent)
    : HUDWidget(look, parent),
      group_(new QButtonGroup(this)) {
    setObjectName(QStringLiteral("dashboardTabs"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(padding, padding, padding, padding);
    row->setSpacing(distance);
    for (std::size_t index = 0; index < DashboardTexts::tabs.size(); ++index) {
        auto* tab = new TabButton(look, glyphs.at(index), shown(DashboardTexts::tabs.at(index)));
        tab->setObjectName(QString::fromLatin1(names.at(index)));
        group_->addButton(tab, static_cast<int>(index));
        row->addWidget(tab);
    }
    group_->button(0)->setChecked(true);
    connect(group_, &QButtonGroup::idToggled, this, [this](int /*index*/, bool isChosen) {
        if (isChosen) Q_EMIT currentChanged(current());
    });
}

DashboardTabs::Tab DashboardTabs::current() const {
    return static_cast<Tab>(group_->checkedId());
}

void DashboardTabs::setCurrent(Tab tab) {
    group_->button(static_cast<int>(tab))->setChecked(true);
}

void DashboardTabs::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), barRadius, colors().card);
    strokeInside(painter, rect(), barRadius, look().increaseContrast ? colors().edgeStrong : colors().edge);
}

} // namespace HarrowlaneApp
