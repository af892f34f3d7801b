#include "HarrowlaneApp/Views/FirstRunCard.h"

#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/SpokenPicture.h"

namespace HarrowlaneApp {

namespace {

constexpr int padding = 24;
constexpr int bottomPadding = 22;
constexpr double tileSide = 52.0;
constexpr double tileRadius = 14.0;
constexpr double tileGlyph = 26.0;
constexpr PushButton::Measures buttonMeasures{.height = 30, .radius = 8.0, .padding = 16, .textSize = 12.0};

constexpr int warmingUpHeight = 96;
constexpr int spinnerSide = 16;
constexpr int spinnerGap = 10;

void paintTile(QPainter& painter, const QRectF& rect, const Look& look) {
    const QColor& cyan = look.palette().cyan;
    fillRounded(painter, rect, tileRadius, withOpacity(cyan, 0.10));
    strokeInside(painter, rect, tileRadius, withOpacity(cyan, look.increaseContrast ? 0.75 : 0.34));
    const double inset = (tileSide - tileGlyph) / 2.0;
    Glyphs::paint(painter, Glyph::risingChart, {.corner = rect.topLeft() + QPointF(inset, inset), .size = tileGlyph},
                  cyan);
}

HUDLabel* centredLabel(const ApplicationLook& look, TextStyle style) {
    auto* label = new HUDLabel(look, std::move(style), Overflow::wrap);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

} // namespace

FirstRunCard::FirstRunCard(const ApplicationLook& look, QWidget* parent)
    : PanelBox(look, 12.0, nullptr, parent),
      title_(centredLabel(look, {.font = HUDType::text(16, HUDType::Weight::semibold), .lineHeight = 20})),
      text_(centredLabel(look, {.font = HUDType::text(12), .color = &Palette::dim, .lineHeight = 17})) {
    auto* tile = new SpokenPicture(look);
    tile->setContent({.size = {tileSide, tileSide}, .words = {}, .paint = paintTile});
    auto* button = new PushButton(look, shown(NowTexts::sampleButton), buttonMeasures);
    button->setKind(PushButton::Kind::prominent);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, bottomPadding);
    column->setSpacing(0);
    column->addWidget(tile, 0, Qt::AlignHCenter);
    column->addSpacing(14);
    column->addWidget(title_);
    column->addSpacing(6);
    column->addWidget(text_);
    column->addSpacing(16);
    column->addWidget(button, 0, Qt::AlignHCenter);
    connect(button, &QAbstractButton::clicked, this, &FirstRunCard::onSample);
    title_->setObjectName(QStringLiteral("firstRunTitle"));
    text_->setObjectName(QStringLiteral("firstRunText"));
    button->setObjectName(QStringLiteral("seeSample"));
}

void FirstRunCard::setReadiness(Readiness readiness) {
    const NowTexts::FirstRunCard texts = NowTexts::firstRunCard(readiness);
    title_->setText(shown(texts.title));
    text_->setText(shown(texts.text));
}

Spinner::Spinner(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent), turning_(new Turning(*this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    turning_->set(true);
}

QSize Spinner::sizeHint() const {
    return {spinnerSide, spinnerSide};
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double half = spinnerSide / 2.0;
    painter.translate(half, half);
    painter.rotate(turning_->angle());
    Glyphs::paint(painter, Glyph::spinner, {.corner = {-half, -half}, .size = spinnerSide}, colors().cyan);
}

WarmingUpCard::WarmingUpCard(const ApplicationLook& look, QWidget* parent) : PanelBox(look, 12.0, nullptr, parent) {
    setMinimumHeight(warmingUpHeight);
    auto* text = centredLabel(look, {.font = HUDType::text(12), .color = &Palette::dim, .lineHeight = 16});
    text->setText(shown(NowTexts::warmingUpText));
    text->setObjectName(QStringLiteral("warmingUpText"));
    auto* spinner = new Spinner(look);
    spinner->setObjectName(QStringLiteral("spinner"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, 0, padding, 0);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(spinner, 0, Qt::AlignHCenter);
    column->addSpacing(spinnerGap);
    column->addWidget(text);
    column->addStretch();
}

} // namespace HarrowlaneApp
