#pragma once

#include <QPointF>
#include <QSizeF>
#include <QString>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// The burn rate as a large figure with a small sign behind it, in the colour of its severity, and a caption below.
struct PaceRatio {
    double tokensUsed = 0.0;
    double timeUsed = 0.0;
    double size = 21.0;

    [[nodiscard]] Pace::Shares shares() const { return {.tokensUsed = tokensUsed, .timeUsed = timeUsed}; }
    /// The figure's line; the caption hangs below it.
    [[nodiscard]] double lineHeight() const { return size + 1.0; }
    [[nodiscard]] double figureWidth() const;
    /// With the caption.
    [[nodiscard]] QSizeF extent() const;

    /// Figure and caption end at the right side of that upper right corner.
    void paint(QPainter& painter, const QPointF& rightCorner, const Look& look) const;
};

/// How far the tokens run ahead of the time, in words; nothing where they hardly do.
struct PaceOverspendNote {
    double tokensUsed = 0.0;
    double timeUsed = 0.0;

    static constexpr double lineHeight = 13.0;

    /// Empty where there is no note.
    [[nodiscard]] QString phrase() const;
    [[nodiscard]] QSizeF extent() const;

    void paint(QPainter& painter, const QPointF& corner, const Look& look) const;
};

} // namespace HarrowlaneApp
