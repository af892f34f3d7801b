#pragma once

#include <optional>

#include <QObject>

#include "HarrowlaneApp/Drawing/DisplayOptions.h"
#include "HarrowlaneApp/Drawing/Look.h"
#include "HarrowlaneApp/Platform/DesktopAppearance.h"

namespace HarrowlaneApp {

/// The look that all views share, and the only one that they draw in. For the main thread.
class ApplicationLook : public QObject {
    Q_OBJECT

public:
    /// Stays as it is, unless an appearance is forced: for pictures and tests.
    explicit ApplicationLook(const Look& look, QObject* parent = nullptr);
    /// Follows the desktop and its display options. Both outlive it.
    ApplicationLook(const DesktopAppearance& desktop, const DisplayOptions& options, QObject* parent = nullptr);

    [[nodiscard]] const Look& look() const { return look_; }
    [[nodiscard]] const Palette& palette() const { return look_.palette(); }

    /// The appearance of all windows, whatever the desktop wants; absent to do as the desktop does.
    void force(std::optional<Appearance> appearance);
    [[nodiscard]] std::optional<Appearance> forced() const { return forced_; }

Q_SIGNALS:
    /// What is on the screen is to be drawn again.
    void changed();

private:
    void read();

    const DesktopAppearance* desktop_ = nullptr;
    const DisplayOptions* options_ = nullptr;
    /// Without a desktop: what shows while nothing is forced.
    Look given_;
    std::optional<Appearance> forced_;
    Look look_;
};

} // namespace HarrowlaneApp
