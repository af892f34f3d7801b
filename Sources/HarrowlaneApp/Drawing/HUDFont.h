#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <QStringList>

class QPainter;

namespace HarrowlaneApp {

/// A box for one line of text, in which its letters are centred by ascent and descent, and by eye.
struct LineBox {
    double left = 0.0;
    double top = 0.0;
    double height = 0.0;
};

/// A face at a size, which may be a fraction of a point: QFont alone knows whole pixels. Text is measured and drawn
/// here and nowhere else, so that a figure takes the same room on every screen, at every scale.
class HUDFont {
public:
    /// `size` and `tracking`, which is added behind each letter, are in points.
    HUDFont(const QFont& face, double size, double tracking = 0.0);

    [[nodiscard]] double size() const { return size_; }
    /// For a widget that wants a QFont: at the nearest whole size.
    [[nodiscard]] QFont rounded() const;

    /// The width that a line takes, with the tracking behind its last letter.
    [[nodiscard]] double width(const QString& text) const;
    /// The same without that tracking: what is to be centred, or to end somewhere.
    [[nodiscard]] double inkWidth(const QString& text) const;
    [[nodiscard]] double ascent() const;
    [[nodiscard]] double descent() const;
    /// How tall a capital stands.
    [[nodiscard]] double capitalHeight() const;
    /// How far the ink of a text reaches above the baseline.
    [[nodiscard]] double inkAbove(const QString& text) const;
    /// The room between a letter's ink and its end.
    [[nodiscard]] double rightBearing(QChar letter) const;
    /// Where the baseline lies in a box, from the top of the drawing.
    [[nodiscard]] double baseline(const LineBox& box) const;

    /// The text, cut with an ellipsis where it is wider than that.
    [[nodiscard]] QString elided(const QString& text, double width) const;
    /// The text in lines of at most that width, broken between words, and within one where it alone is wider.
    [[nodiscard]] QStringList wrapped(const QString& text, double width) const;

    /// Draws one line in the painter's pen, from a point on its baseline on.
    void draw(QPainter& painter, const QPointF& baseline, const QString& text) const;
    /// From the box's left side on.
    void draw(QPainter& painter, const LineBox& box, const QString& text) const;
    /// So that it ends at `right`; the box's left side does not count.
    void drawToRight(QPainter& painter, const LineBox& box, double right, const QString& text) const;

private:
    /// At a size so large that rounding does not show; `scale_` brings its lengths to ours.
    QFont master_;
    double size_;
    double scale_;
};

} // namespace HarrowlaneApp
