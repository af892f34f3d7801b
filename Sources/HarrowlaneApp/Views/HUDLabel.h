#pragma once

#include <QString>
#include <QStringList>

#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// How a text is set.
struct TextStyle {
    HUDFont font;
    QColor Palette::*color = &Palette::ink;
    double opacity = 1.0;
    /// In which each line's letters are centred, points.
    int lineHeight = 16;
};

/// What a label does with a text that is wider than itself.
enum class Overflow { elide, wrap };

/// A text that is read and cannot be acted on. A screen reader reads it too.
class HUDLabel : public HUDWidget {
    Q_OBJECT

public:
    HUDLabel(const ApplicationLook& look, TextStyle style, Overflow overflow = Overflow::elide,
             QWidget* parent = nullptr);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return text_; }
    void setStyle(TextStyle style);
    [[nodiscard]] const TextStyle& textStyle() const { return style_; }
    /// Left, right or centred.
    void setAlignment(Qt::Alignment alignment) { alignment_ = alignment; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return overflow_ == Overflow::wrap; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QStringList lines(double width) const;
    [[nodiscard]] double left(const QString& line) const;

    TextStyle style_;
    Overflow overflow_;
    Qt::Alignment alignment_ = Qt::AlignLeft;
    QString text_;
};

/// A text of the copy.
[[nodiscard]] inline QString shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text as a tooltip that breaks its long lines and keeps its own breaks, which Qt does to rich text alone.
[[nodiscard]] inline QString wrappedToolTip(const QString& text) {
    return QStringLiteral("<p style='white-space: pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace HarrowlaneApp
