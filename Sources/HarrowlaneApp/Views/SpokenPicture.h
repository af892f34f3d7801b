#pragma once

#include <functional>

#include <QSizeF>
#include <QString>

#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// A small drawing in a view, with words for those who do not see it. It cannot be acted on.
class SpokenPicture : public HUDWidget {
    Q_OBJECT

public:
    struct Content {
        /// What the drawing takes; as a widget it is that, counted up to whole points.
        QSizeF size;
        /// Empty for a mere ornament.
        QString words;
        /// Draws into the widget's rectangle.
        std::function<void(QPainter&, const QRectF&, const Look&)> paint;
    };

    explicit SpokenPicture(const ApplicationLook& look, QWidget* parent = nullptr);

    void setContent(Content content);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Content content_;
};

} // namespace HarrowlaneApp
