#pragma once

#include <QPointF>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

/// The product's name as it is written on its windows.
namespace HarrowlaneApp::Wordmark {

/// What a screen reader says for it.
inline constexpr const char* spokenLabel = "Brindlewick";

/// The width at a size, in points.
[[nodiscard]] double width(double size);

/// Draws it from a point on its baseline on.
void paint(QPainter& painter, const QPointF& baseline, double size, const Look& look);

} // namespace HarrowlaneApp::Wordmark
