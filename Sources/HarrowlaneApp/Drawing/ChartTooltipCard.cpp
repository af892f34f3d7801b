#include "HarrowlaneApp/Drawing/ChartTooltipCard.h"

#include <algorithm>

#include <QPainter>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/SoftShadow.h"

namespace HarrowlaneApp {

namespace {

using HUDType::Weight;

constexpr double paddingX = 11.0;
constexpr double paddingY = 10.0;
constexpr double radius = 10.0;
constexpr double headerHeight = 14.0;
constexpr double aboveDivider = 7.0;
constexpr double dividerHeight = 1.0;
constexpr double belowDivider = 6.0;
constexpr double rowHeight = 17.0;
constexpr double groupGap = 4.0;
constexpr double noteLine = 12.0;
constexpr double innerWidth = ChartTooltip::width - 2.0 * paddingX;
constexpr double leastGap = 5.0;

QString fromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

HUDFont noteFont() {
    return HUDType::text(9.0);
}

/// In as few lines as hold it, and these as even as can be.
QStringList evenLines(const QString& text, const HUDFont& font) {
    constexpr double precision = 1.0;
    const QStringList fewest = font.wrapped(text, innerWidth);
    double tooNarrow = 0.0;
    double enough = innerWidth;
    while (enough - tooNarrow > precision) {
        const double middle = (tooNarrow + enough) / 2.0;
        const bool fits = font.wrapped(text, middle).size() == fewest.size();
        (fits ? enough : tooNarrow) = middle;
    }
    return font.wrapped(text, enough);
}

QStringList noteLines(const ChartTooltip::Content& content) {
    return content.note ? evenLines(fromText(*content.note), noteFont()) : QStringList();
}

SoftShadow shadow() {
    return {.drop = 8.0, .blur = 24.0, .color = withOpacity(Qt::black, 0.45)};
}

/// A text at a line's beginning and one at its end, which is never cut.
struct Ends {
    QString label;
    HUDFont labelFont;
    QColor labelColor;
    QString value;
    HUDFont valueFont;
    QColor valueColor;
    /// What stands before the label.
    double indent = 0.0;
};

/// The card while it is being written, from the top down.
class Sheet {
public:
    Sheet(QPainter& painter, const QRectF& card, const Look& look)
        : painter_(painter),
          look_(look),
          left_(card.left() + paddingX),
          top_(card.top() + paddingY) {}

    void line(const Ends& ends, double height) {
        const LineBox box{.left = left_ + ends.indent, .top = top_, .height = height};
        const double room = innerWidth - ends.indent - ends.valueFont.width(ends.value) - leastGap;
        painter_.setPen(ends.labelColor);
        ends.labelFont.draw(painter_, box, ends.labelFont.elided(ends.label, std::max(room, 0.0)));
        painter_.setPen(ends.valueColor);
        ends.valueFont.drawToRight(painter_, box, left_ + innerWidth, ends.value);
        top_ += height;
    }

    void header(const ChartTooltip::Content& content) {
        line({.label = QString::fromStdString(content.header),
              .labelFont = HUDType::text(11.5, Weight::semibold),
              .labelColor = colors().ink,
              .value = fromText(content.mark),
              .valueFont = HUDType::text(10.5),
              .valueColor = colors().cyan},
             headerHeight);
        skip(aboveDivider);
        painter_.fillRect(QRectF(left_, top_, innerWidth, dividerHeight), colors().edge);
        skip(dividerHeight + belowDivider);
    }

    void share(const BucketShare& part) {
        constexpr double swatch = 8.0;
        constexpr double swatchGap = 7.0;
        const QRectF square(left_, top_ + (rowHeight - swatch) / 2.0, swatch, swatch);
        fillRounded(painter_, square, 2.0, bucketColor(part.bucket, look_.appearance));
        line({.label = fromText(label(part.bucket)),
              .labelFont = HUDType::text(10.5),
              .labelColor = colors().dim,
              .value = QString::fromStdString(Figures::percent(part.share)),
              .valueFont = HUDType::text(10.5, Weight::medium),
              .valueColor = colors().ink,
              .indent = swatch + swatchGap},
             rowHeight);
    }

    void row(const ChartTooltip::Row& row) {
        line({.label = QString::fromStdString(row.label),
              .labelFont = HUDType::text(10.5, row.isBold ? Weight::semibold : Weight::regular),
              .labelColor = row.isBold ? colors().ink : colors().dim,
              .value = QString::fromStdString(row.value),
              .valueFont = HUDType::text(10.5, row.isBold ? Weight::bold : Weight::medium),
              .valueColor = colors().ink},
             rowHeight);
    }

    void noteText(const QString& text) {
        painter_.setPen(colors().dim);
        noteFont().draw(painter_, LineBox{.left = left_, .top = top_, .height = noteLine}, text);
        skip(noteLine);
    }

    void skip(double distance) { top_ += distance; }

private:
    [[nodiscard]] const Palette& colors() const { return look_.palette(); }

    QPainter& painter_;
    const Look& look_;
    double left_;
    double top_;
};

} // namespace

double ChartTooltipCard::height() const {
    const auto rows = static_cast<double>(content.mix.size() + content.rows.size());
    const auto notes = static_cast<double>(noteLines(content).size());
    return 2.0 * paddingY + headerHeight + aboveDivider + dividerHeight + belowDivider + rows * rowHeight +
           (content.mix.empty() ? 0.0 : groupGap) + (notes > 0.0 ? groupGap + notes * noteLine : 0.0);
}

QRectF ChartTooltipCard::extent(const QRectF& rect) {
    return shadow().extent(rect) | rect;
}

void ChartTooltipCard::paint(QPainter& painter, const QRectF& rect, const Look& look) const {
    painter.save();
    shadow().paint(painter, rect);
    fillRounded(painter, rect, radius, look.palette().cardRaised);
    strokeInside(painter, rect, radius, look.palette().edgeStrong, HUDPanel{}.surface(look).edgeWidth);
    Sheet sheet(painter, rect, look);
    sheet.header(content);
    for (const BucketShare& part : content.mix) sheet.share(part);
    if (!content.mix.empty()) sheet.skip(groupGap);
    for (const ChartTooltip::Row& row : content.rows) sheet.row(row);
    sheet.skip(groupGap);
    for (const QString& text : noteLines(content)) sheet.noteText(text);
    painter.restore();
}

} // namespace HarrowlaneApp
