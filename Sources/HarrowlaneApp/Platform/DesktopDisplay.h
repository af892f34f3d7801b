#pragma once

#include <QPointer>

#include "HarrowlaneApp/Drawing/DisplayOptions.h"
#include "HarrowlaneApp/Platform/DesktopAppearance.h"

namespace HarrowlaneApp {

/// The desktop's display options, as what draws asks for them. Where the desktop's appearance goes away first, neither
/// option is on.
class DesktopDisplay : public AccessibilityDisplay {
public:
    explicit DesktopDisplay(const DesktopAppearance& desktop) : desktop_(&desktop) {}

    [[nodiscard]] bool shouldReduceTransparency() const override { return desktop_ && desktop_->reducesTransparency(); }
    [[nodiscard]] bool shouldIncreaseContrast() const override { return desktop_ && desktop_->increasesContrast(); }
    void observe(std::function<void()> onNotice) override;

private:
    QPointer<const DesktopAppearance> desktop_;
    /// Ends the observation when it goes away.
    QObject observer_;
};

} // namespace HarrowlaneApp
