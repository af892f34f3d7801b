#include "HarrowlaneApp/Views/NowHeader.h"

#include <algorithm>
#include <cmath>

#include <QHBoxLayout>
#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/HeaderChip.h"
#include "HarrowlaneApp/Drawing/Wordmark.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

constexpr double wordmarkSize = 13.0;
constexpr int wordmarkLeft = 16;
constexpr int chipRight = 12;
constexpr int chipTop = (NowHeader::fullHeight - static_cast<int>(HeaderChip::height)) / 2;
constexpr int exitLeft = 9;
constexpr int exitRight = 11;

HUDFont exitFont() {
    return HUDType::text(11.0, HUDType::Weight::semibold);
}

HeaderChip pictureOf(NowTexts::HeaderChip chip) {
    return {.text = shown(NowTexts::text(chip)),
            .color = chip == NowTexts::HeaderChip::connectGauge ? &Palette::cyan : &Palette::dim};
}

void paintWordmark(QPainter& painter, const QRectF& rect, const Look& look) {
    const LineBox box{.top = rect.top(), .height = rect.height()};
    Wordmark::paint(painter, {rect.left(), HUDType::display(wordmarkSize).baseline(box)}, wordmarkSize, look);
}

} // namespace

ExitButton::ExitButton(const ApplicationLook& look, QWidget* parent)
    : HUDButton(look, shown(NowTexts::exitButton), parent) {}

QSize ExitButton::sizeHint() const {
    return {exitLeft + static_cast<int>(std::ceil(exitFont().width(text()))) + exitRight,
            static_cast<int>(HeaderChip::height)};
}

FocusRing::Outline ExitButton::outline() const {
    return {.box = rect(), .radius = HeaderChip::radius};
}

void ExitButton::paintFace(QPainter& painter) {
    // The capsule's right end: its left one lies outside of the button.
    const QRectF capsule = QRectF(rect()).adjusted(-2.0 * HeaderChip::radius, 0.0, 0.0, 0.0);
    fillRounded(painter, capsule, HeaderChip::radius,
                withOpacity(colors().violet, std::max(0.10 * hovered(), 0.18 * pressed())));
    painter.setPen(colors().ink);
    exitFont().draw(painter, {.left = exitLeft, .height = 1.0 * height()}, text());
}

NowHeader::NowHeader(const ApplicationLook& look, QWidget* parent)
    : QWidget(parent),
      wordmark_(new SpokenPicture(look)),
      chip_(new SpokenPicture(look)),
      sample_(new SpokenPicture(look)),
      exit_(new ExitButton(look, sample_)) {
    setFixedHeight(fullHeight - overlap);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(wordmarkLeft, chipTop, chipRight, 0);
    row->setSpacing(0);
    row->addWidget(wordmark_, 0, Qt::AlignTop);
    row->addStretch();
    row->addWidget(chip_, 0, Qt::AlignTop);
    row->addWidget(sample_, 0, Qt::AlignTop);
    wordmark_->setContent({.size = {Wordmark::width(wordmarkSize), HeaderChip::height},
                           .words = QString::fromLatin1(Wordmark::spokenLabel),
                           .paint = paintWordmark});
    fillSample();
    connect(exit_, &QAbstractButton::clicked, this, &NowHeader::exited);
    wordmark_->setObjectName(QStringLiteral("wordmark"));
    chip_->setObjectName(QStringLiteral("headerChip"));
    sample_->setObjectName(QStringLiteral("sampleChip"));
    exit_->setObjectName(QStringLiteral("exitSample"));
    setChip(NowTexts::HeaderChip::none);
}

void NowHeader::fillSample() {
    const QSize button = exit_->sizeHint();
    const double width = std::ceil(SampleChip::markWidth() + exitLeft + exitFont().width(exit_->text()) + exitRight);
    sample_->setContent(
        {.size = {width, HeaderChip::height}, .words = shown(NowTexts::sampleMark), .paint = SampleChip::paint});
    exit_->setGeometry(QRect(QPoint(static_cast<int>(width) - button.width(), 0), button));
}

void NowHeader::setChip(NowTexts::HeaderChip chip) {
    const bool isSample = chip == NowTexts::HeaderChip::sample;
    sample_->setVisible(isSample);
    chip_->setVisible(!isSample && chip != NowTexts::HeaderChip::none);
    const HeaderChip picture = pictureOf(chip);
    chip_->setContent({.size = picture.size(),
                       .words = picture.text,
                       .paint = [picture](QPainter& painter, const QRectF& rect, const Look& look) {
                           picture.paint(painter, rect, look);
                       }});
}

} // namespace HarrowlaneApp
