#pragma once

#include <QScrollArea>
#include <QScrollBar>

#include "HarrowlaneApp/Views/ApplicationLook.h"

namespace HarrowlaneApp {

/// A thin bar without arrows that tells how far a view has scrolled.
class HUDScrollBar : public QScrollBar {
    Q_OBJECT

public:
    static constexpr int thickness = 8;

    HUDScrollBar(const ApplicationLook& look, Qt::Orientation orientation, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF thumb() const;

    const ApplicationLook& look_;
};

/// What scrolls, without a frame or a ground of its own.
class HUDScrollArea : public QScrollArea {
    Q_OBJECT

public:
    enum class Way { down, sideways };

    HUDScrollArea(const ApplicationLook& look, Way way, QWidget* parent = nullptr);

    /// Takes it over. What is behind the area shows through.
    void setContent(QWidget* content);

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    Way way_;
};

} // namespace HarrowlaneApp
