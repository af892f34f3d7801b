#pragma once

#include <optional>

#include <QRectF>
#include <QString>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Drawing/Look.h"
#include "HarrowlaneApp/Drawing/Rail.h"

class QPainter;

namespace HarrowlaneApp {

/// Tokens against time: a rail for the share of the window's tokens that is spent, one for the share of its time that
/// is gone, and a line at the latter across both. What was spent before its time shows in a colour of its own.
struct PaceRails {
    /// The texts under the two ends of the rails.
    struct Axis {
        QString start;
        QString end;
    };

    double tokensUsed = 0.0;
    double timeUsed = 0.0;
    double railHeight = 8.0;
    double railGap = 10.0;
    std::optional<Axis> axis;

    /// A text at an end of the rails, within its room.
    struct AxisLabel {
        QString text;
        QRectF room;
        Qt::Alignment side = Qt::AlignLeft;
    };

    struct Layout {
        QRectF tokensRow;
        QRectF sessionRow;
        /// The rails' tracks; the key stands left of them in the row, the value right.
        QRectF tokensTrack;
        QRectF sessionTrack;
        /// The clock line's box: over both tracks, and a little more.
        QRectF clock;
        std::optional<AxisLabel> start;
        std::optional<AxisLabel> end;
    };

    [[nodiscard]] Pace::Shares shares() const { return {.tokensUsed = tokensUsed, .timeUsed = timeUsed}; }
    [[nodiscard]] double height() const;
    /// The places from an upper left corner on; keys and values take 94 of the width.
    [[nodiscard]] Layout layOut(const QPointF& corner, double width) const;

    [[nodiscard]] Rail tokensRail(const Palette& palette) const;
    [[nodiscard]] Rail sessionRail(const Palette& palette) const;

    void paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const;

private:
    /// Puts the texts of the axis under the rails; one too near to the clock line is left out.
    void timeScale(const Axis& texts, Layout& layout) const;
};

} // namespace HarrowlaneApp
