#pragma once

#include <QObject>

#include "HarrowlaneApp/Drawing/Palette.h"

namespace HarrowlaneApp {

/// How the desktop wants programs to look. For the main thread.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual Appearance appearance() const = 0;
    [[nodiscard]] virtual bool increasesContrast() const = 0;
    /// False where the desktop knows no such wish.
    [[nodiscard]] virtual bool reducesTransparency() const = 0;

Q_SIGNALS:
    /// One of them is not what it was.
    void changed();
};

} // namespace HarrowlaneApp
