#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// A small capsule that says in two words how things stand.
struct StatusBadge {
    QString label;
    UsageModel::Severity severity = UsageModel::Severity::green;

    static constexpr double height = 20.0;

    [[nodiscard]] QSizeF size() const;
    /// The badge with its label cut so that it is no wider than that.
    [[nodiscard]] StatusBadge within(double width) const;
    /// Draws within a rectangle of that size.
    void paint(QPainter& painter, const QRectF& rect, const Look& look) const;
};

} // namespace HarrowlaneApp
