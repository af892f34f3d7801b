#include "HarrowlaneApp/Views/ProseLabel.h"

#include <cmath>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr int lineHeight = 15;
constexpr QChar codeMark = u'`';

HUDFont fontOf(bool isCode) {
    return HUDType::text(11, isCode ? HUDType::Weight::medium : HUDType::Weight::regular);
}

} // namespace

ProseLabel::ProseLabel(const ApplicationLook& look, const QString& text, QWidget* parent)
    : HUDWidget(look, parent),
      words_(wordsOf(text)) {
    setAccessibleName(QString(text).remove(codeMark));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

std::vector<ProseLabel::Word> ProseLabel::wordsOf(const QString& text) {
    std::vector<Word> words(1);
    bool isCode = false;
    for (const QChar letter : text) {
        if (letter == codeMark) {
            isCode = !isCode;
        } else if (letter == u' ') {
            words.emplace_back();
        } else {
            Word& word = words.back();
            if (word.empty() || word.back().isCode != isCode) word.push_back({.isCode = isCode});
            word.back().text += letter;
        }
    }
    return words;
}

double ProseLabel::widthOf(const Word& word) {
    double width = 0.0;
    for (const Run& run : word) width += fontOf(run.isCode).width(run.text);
    return width;
}

std::vector<ProseLabel::Placed> ProseLabel::layOut(double width) const {
    const double space = fontOf(false).width(QStringLiteral(" "));
    std::vector<Placed> placed;
    double left = 0.0;
    int line = 0;
    for (const Word& word : words_) {
        if (left > 0.0 && left + widthOf(word) > width) {
            left = 0.0;
            ++line;
        }
        for (const Run& run : word) {
            placed.push_back({.run = run, .left = left, .line = line});
            left += fontOf(run.isCode).width(run.text);
        }
        left += space;
    }
    return placed;
}

QSize ProseLabel::sizeHint() const {
    constexpr int usualWidth = 412;
    return {usualWidth, heightForWidth(usualWidth)};
}

QSize ProseLabel::minimumSizeHint() const {
    return {120, lineHeight};
}

int ProseLabel::heightForWidth(int width) const {
    const auto placed = layOut(width);
    return (placed.empty() ? 1 : placed.back().line + 1) * lineHeight;
}

void ProseLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Placed& part : layOut(width())) {
        painter.setPen(part.run.isCode ? colors().ink : colors().dim);
        const LineBox box{.left = part.left, .top = 1.0 * part.line * lineHeight, .height = lineHeight};
        fontOf(part.run.isCode).draw(painter, box, part.run.text);
    }
}

} // namespace HarrowlaneApp
