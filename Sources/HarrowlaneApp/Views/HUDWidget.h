#pragma once

#include <QWidget>

#include "HarrowlaneApp/Views/ApplicationLook.h"

namespace HarrowlaneApp {

/// A widget that draws itself in the shared look, which outlives it, and anew when that changes.
class HUDWidget : public QWidget {
    Q_OBJECT

public:
    explicit HUDWidget(const ApplicationLook& look, QWidget* parent = nullptr) : QWidget(parent), look_(look) {
        connect(&look, &ApplicationLook::changed, this, [this] { update(); });
    }

    [[nodiscard]] const ApplicationLook& applicationLook() const { return look_; }
    [[nodiscard]] const Look& look() const { return look_.look(); }
    [[nodiscard]] const Palette& colors() const { return look_.palette(); }

private:
    const ApplicationLook& look_;
};

} // namespace HarrowlaneApp
