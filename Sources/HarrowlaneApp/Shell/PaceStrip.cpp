#include <array>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDGround.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/Images.h"
#include "HarrowlaneApp/Drawing/PaceRails.h"
#include "HarrowlaneApp/Drawing/PaceRatio.h"
#include "HarrowlaneApp/Shell/UiDumps.h"

namespace HarrowlaneApp {

namespace {

constexpr std::array<Pace::Shares, 6> samples{{
    {.tokensUsed = 0.01, .timeUsed = 0.04},
    {.tokensUsed = 0.18, .timeUsed = 0.60},
    {.tokensUsed = 0.58, .timeUsed = 0.60},
    {.tokensUsed = 0.69, .timeUsed = 0.60},
    {.tokensUsed = 0.92, .timeUsed = 0.60},
    {.tokensUsed = 1.00, .timeUsed = 0.30},
}};
constexpr double scale = 2.0;
constexpr double margin = 20.0;
constexpr double width = 420.0;
constexpr double pitch = 76.0;
constexpr double railsWidth = 288.0;
constexpr double padding = 16.0;

void paintSample(QPainter& painter, const Pace::Shares& shares, const QPointF& corner, const Look& look) {
    const auto [tokens, time] = shares;
    const PaceRails rails{.tokensUsed = tokens, .timeUsed = time};
    rails.paint(painter, corner, railsWidth, look);
    const QPointF right(margin + width - padding, corner.y());
    PaceRatio{.tokensUsed = tokens, .timeUsed = time}.paint(painter, right, look);
    const PaceOverspendNote note{.tokensUsed = tokens, .timeUsed = time};
    note.paint(painter, corner + QPointF(0.0, rails.height() + 4.0), look);
}

} // namespace

QImage DumpUI::paceStrip() {
    constexpr Look look{.appearance = Appearance::dark};
    const QSizeF panel(width, pitch * static_cast<double>(samples.size()) + padding);
    const QSizeF whole = panel + QSizeF(2.0 * margin, 2.0 * margin);
    return Images::drawn(whole, scale, [&](QPainter& painter) {
        HUDGround::paint(painter, QRectF(QPointF(), whole), look);
        HUDPanel{}.paint(painter, QRectF(QPointF(margin, margin), panel), look);
        QPointF corner(margin + padding, margin + padding);
        for (const Pace::Shares& shares : samples) {
            paintSample(painter, shares, corner, look);
            corner.ry() += pitch;
        }
    });
}

} // namespace HarrowlaneApp
