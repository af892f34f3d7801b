#include "HarrowlaneApp/Platform/DesktopDisplay.h"

#include <utility>

namespace HarrowlaneApp {

void DesktopDisplay::observe(std::function<void()> onNotice) {
    if (desktop_) QObject::connect(desktop_, &DesktopAppearance::changed, &observer_, std::move(onNotice));
}

} // namespace HarrowlaneApp
