#include "HarrowlaneApp/Views/CopyButton.h"

#include <algorithm>
#include <cmath>

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

constexpr double radius = 7.0;
constexpr int leastWidth = 112;
constexpr int lineHeight = 14;
constexpr int topPadding = 5;
constexpr int leftPadding = 8;
constexpr int rightPadding = 9;
constexpr int glyphSize = 12;
constexpr int glyphGap = 6;
constexpr int textLeft = leftPadding + glyphSize + glyphGap;

HUDFont textFont() {
    return HUDType::text(11.0, HUDType::Weight::semibold);
}

} // namespace

CopyButton::CopyButton(const ApplicationLook& look, QWidget* parent) : HUDButton(look, QString(), parent) {
    fallBack_.setSingleShot(true);
    fallBack_.setInterval(static_cast<int>(NowTexts::copiedSeconds * 1000.0));
    connect(this, &QAbstractButton::clicked, this, &CopyButton::copy);
    connect(&fallBack_, &QTimer::timeout, this, &CopyButton::tell);
}

void CopyButton::setCommand(const QString& command) {
    if (command == command_) return;
    command_ = command;
    fallBack_.stop();
    updateGeometry();
    tell();
}

void CopyButton::copy() {
    QGuiApplication::clipboard()->setText(command_);
    fallBack_.start();
    tell();
}

/// The text is what a screen reader says, and it hears of its change.
void CopyButton::tell() {
    setText(isCopied() ? shown(NowTexts::copiedText) : shown(NowTexts::copyName(command_.toStdString())));
    update();
}

int CopyButton::naturalWidth() const {
    const int textWidth = static_cast<int>(std::ceil(textFont().width(command_)));
    return std::max(textLeft + textWidth + rightPadding, leastWidth);
}

void CopyButton::setRoom(int width) {
    if (width == room_) return;
    room_ = width;
    updateGeometry();
    update();
}

QStringList CopyButton::lines() const {
    return textFont().wrapped(command_, std::max(sizeHint().width() - textLeft - rightPadding, 1));
}

QSize CopyButton::sizeHint() const {
    const int natural = naturalWidth();
    if (room_ <= 0 || natural <= room_) return {natural, lineHeight + 2 * topPadding};
    const auto count = textFont().wrapped(command_, std::max(room_ - textLeft - rightPadding, 1)).size();
    return {room_, static_cast<int>(count) * lineHeight + 2 * topPadding};
}

FocusRing::Outline CopyButton::outline() const {
    return {.box = rect(), .radius = radius};
}

void CopyButton::paintFace(QPainter& painter) {
    const QColor& color = isCopied() ? colors().good : colors().cyan;
    fillRounded(painter, rect(), radius, withOpacity(color, 0.10));
    fillRounded(painter, rect(), radius, withOpacity(colors().ink, std::max(0.06 * hovered(), 0.12 * pressed())));
    strokeInside(painter, rect(), radius, withOpacity(color, look().increaseContrast ? 0.75 : 0.34));
    const double glyphTop = (height() - glyphSize) / 2.0;
    Glyphs::paint(painter, isCopied() ? Glyph::check : Glyph::copy,
                  {.corner = {leftPadding, glyphTop}, .size = glyphSize}, color);
    painter.setPen(color);
    paintText(painter);
}

void CopyButton::paintText(QPainter& painter) const {
    const QStringList shownLines = isCopied() ? QStringList{text()} : lines();
    double top = (height() - lineHeight * static_cast<double>(shownLines.size())) / 2.0;
    for (const QString& line : shownLines) {
        textFont().draw(painter, {.left = textLeft, .top = top, .height = lineHeight}, line);
        top += lineHeight;
    }
}

} // namespace HarrowlaneApp
