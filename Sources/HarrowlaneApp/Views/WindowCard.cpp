#include "HarrowlaneApp/Views/WindowCard.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/PaceRails.h"
#include "HarrowlaneApp/Drawing/PaceRatio.h"
#include "HarrowlaneApp/Drawing/StatusBadge.h"

namespace HarrowlaneApp {

namespace {

using HUDType::Weight;

constexpr int topPadding = 12;
constexpr int sidePadding = 14;
constexpr int bottomPadding = 11;
constexpr int topLine = 22;
constexpr int badgeGap = 10;
constexpr int railsGap = 4;
constexpr int lowerGap = 9;
constexpr double lowerLine = 14.0;
constexpr double lowerSize = 11.5;

TextStyle titleStyle() {
    // A line as high as the badge's centres the label beside it.
    return {.font = HUDType::display(9.5, 1.6), .color = &Palette::dim, .lineHeight = topLine};
}

/// A part of a line in a face of its own.
struct Run {
    QString text;
    Weight weight = Weight::regular;
    QColor Palette::*color = &Palette::dim;

    [[nodiscard]] HUDFont font() const { return HUDType::text(lowerSize, weight); }
};

/// Two parts, one behind the other with a space between, as one thing to read.
SpokenPicture::Content line(const Run& first, const Run& second) {
    const double space = HUDType::text(lowerSize).width(QStringLiteral(" "));
    const double secondLeft = first.font().width(first.text) + space;
    return {.size = {secondLeft + second.font().width(second.text), lowerLine},
            .words = first.text + QLatin1Char(' ') + second.text,
            .paint = [=](QPainter& painter, const QRectF& rect, const Look& look) {
                const LineBox box{.left = rect.left(), .top = rect.top(), .height = rect.height()};
                painter.setPen(look.palette().*first.color);
                first.font().draw(painter, box, first.text);
                painter.setPen(look.palette().*second.color);
                second.font().draw(painter, {box.left + secondLeft, box.top, box.height}, second.text);
            }};
}

} // namespace

WindowCard::WindowCard(const ApplicationLook& look, QWidget* parent)
    : PanelBox(look, 12.0, nullptr, parent),
      title_(new HUDLabel(look, titleStyle())),
      badge_(new SpokenPicture(look)),
      ratio_(new SpokenPicture(look)),
      rails_(new SpokenPicture(look)),
      resets_(new SpokenPicture(look)),
      left_(new SpokenPicture(look)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(sidePadding, topPadding, sidePadding, bottomPadding);
    column->setSpacing(0);
    auto* top = new QHBoxLayout;
    top->setSpacing(0);
    top->addWidget(title_, 1, Qt::AlignTop);
    top->addWidget(badge_, 0, Qt::AlignTop);
    top->addSpacing(badgeGap);
    top->addWidget(ratio_, 0, Qt::AlignTop);
    column->addLayout(top);
    column->addSpacing(railsGap);
    column->addWidget(rails_);
    column->addSpacing(lowerGap);
    auto* lower = new QHBoxLayout;
    lower->addWidget(resets_);
    lower->addStretch();
    lower->addWidget(left_);
    column->addLayout(lower);
    rails_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    title_->setObjectName(QStringLiteral("title"));
    badge_->setObjectName(QStringLiteral("badge"));
    ratio_->setObjectName(QStringLiteral("ratio"));
    rails_->setObjectName(QStringLiteral("rails"));
    resets_->setObjectName(QStringLiteral("resets"));
    left_->setObjectName(QStringLiteral("timeLeft"));
}

void WindowCard::setWindow(const NowTexts::WindowCard& window) {
    title_->setText(shown(window.title));
    setAccessibleName(title_->text());
    showPace(window);
    showReset(window);
}

void WindowCard::showPace(const NowTexts::WindowCard& window) {
    const StatusBadge badge{.label = shown(window.status.label), .severity = window.status.severity};
    badge_->setContent({.size = {badge.size().width(), topLine},
                        .words = badge.label,
                        .paint = [badge](QPainter& painter, const QRectF& rect, const Look& look) {
                            badge.paint(painter, rect.adjusted(0.0, 1.0, 0.0, -1.0), look);
                        }});
    const PaceRatio ratio{.tokensUsed = window.shares.tokensUsed, .timeUsed = window.shares.timeUsed};
    ratio_->setContent({.size = ratio.extent(),
                        .words = shown(Pace::accessibleRatio(window.shares)),
                        .paint = [ratio](QPainter& painter, const QRectF& rect, const Look& look) {
                            ratio.paint(painter, rect.topRight(), look);
                        }});
    const PaceRails rails{.tokensUsed = window.shares.tokensUsed, .timeUsed = window.shares.timeUsed};
    rails_->setContent({.size = {0.0, rails.height()},
                        .words = shown(Pace::accessibleRails(window.shares)),
                        .paint = [rails](QPainter& painter, const QRectF& rect, const Look& look) {
                            rails.paint(painter, rect.topLeft(), rect.width(), look);
                        }});
    const QString explanation = shown(Pace::explanation(window.shares));
    rails_->setAccessibleDescription(explanation);
    rails_->setToolTip(wrappedToolTip(explanation));
}

void WindowCard::showReset(const NowTexts::WindowCard& window) {
    resets_->setContent(line({.text = shown(NowTexts::resetsWord)},
                             {.text = shown(window.clock), .weight = Weight::medium, .color = &Palette::ink}));
    left_->setContent(line({.text = shown(window.timeLeft), .weight = Weight::semibold, .color = &Palette::ink},
                           {.text = shown(NowTexts::leftWord)}));
}

} // namespace HarrowlaneApp
