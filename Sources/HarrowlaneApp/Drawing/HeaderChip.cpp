#include "HarrowlaneApp/Drawing/HeaderChip.h"

#include <QPainter>

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr double sidePadding = 9.0;
constexpr double markLeft = 10.0;
constexpr double markRight = 8.0;
constexpr double dividerHeight = 12.0;

HUDFont chipFont() {
    return HUDType::text(11.0, HUDType::Weight::medium);
}

HUDFont markFont() {
    return HUDType::display(8.5, 1.2);
}

QString mark() {
    return QString::fromUtf8(NowTexts::sampleMark.data(), static_cast<qsizetype>(NowTexts::sampleMark.size()));
}

double edgeOpacity(const Look& look) {
    return look.increaseContrast ? 0.75 : 0.40;
}

} // namespace

QSizeF HeaderChip::size() const {
    return {chipFont().width(text) + 2.0 * sidePadding, height};
}

void HeaderChip::paint(QPainter& painter, const QRectF& rect, const Look& look) const {
    const QColor& shown = look.palette().*color;
    fillRounded(painter, rect, radius, withOpacity(shown, 0.08));
    strokeInside(painter, rect, radius, withOpacity(shown, edgeOpacity(look)));
    painter.setPen(shown);
    const LineBox box{.left = rect.left() + sidePadding, .top = rect.top(), .height = rect.height()};
    chipFont().draw(painter, box, text);
}

double SampleChip::markWidth() {
    return markLeft + markFont().width(mark()) + markRight + 1.0;
}

void SampleChip::paint(QPainter& painter, const QRectF& rect, const Look& look) {
    const QColor& violet = look.palette().violet;
    fillRounded(painter, rect, HeaderChip::radius, withOpacity(violet, 0.10));
    strokeInside(painter, rect, HeaderChip::radius, withOpacity(violet, edgeOpacity(look)));
    painter.setPen(violet);
    markFont().draw(painter, {.left = rect.left() + markLeft, .top = rect.top(), .height = rect.height()}, mark());
    const QPointF top(rect.left() + markWidth() - 1.0, rect.top() + (rect.height() - dividerHeight) / 2.0);
    painter.fillRect(QRectF(top, QSizeF(1.0, dividerHeight)), withOpacity(violet, edgeOpacity(look)));
}

} // namespace HarrowlaneApp
