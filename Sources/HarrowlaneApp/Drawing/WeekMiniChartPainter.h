#pragma once

#include <QColor>
#include <QRectF>

#include "HarrowlaneApp/Drawing/Look.h"
#include "UsageModel/WeekSeries.h"

class QPainter;

namespace HarrowlaneApp::WeekMiniChart {

/// A week on the place where it is drawn.
struct Picture {
    const UsageModel::WeekSeries& series;
    /// Of curve, forecast and landing.
    QColor tint;
    QRectF place;
};

/// Draws the running total of a week, its forecast with the cone, the limit, and the landing in figures.
void paint(QPainter& painter, const Picture& picture, const Look& look);

} // namespace HarrowlaneApp::WeekMiniChart
