#pragma once

#include "HarrowlaneApp/Platform/Autostart.h"

namespace HarrowlaneApp {

/// For a desktop of which it is not known how it starts programs.
class NoAutostart : public Autostart {
public:
    [[nodiscard]] bool isAvailable() const override { return false; }
    [[nodiscard]] bool isEnabled() const override { return false; }
    void setEnabled(bool) override {}
};

} // namespace HarrowlaneApp
