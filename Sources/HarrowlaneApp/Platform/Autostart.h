#pragma once

namespace HarrowlaneApp {

/// Whether the desktop starts the program when the user logs in.
class Autostart {
public:
    Autostart() = default;
    Autostart(const Autostart&) = delete;
    Autostart& operator=(const Autostart&) = delete;
    virtual ~Autostart() = default;

    /// Whether it can be decided here at all.
    [[nodiscard]] virtual bool isAvailable() const = 0;
    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// Does nothing where it is not available. Throws `std::system_error` where the decision cannot be kept.
    virtual void setEnabled(bool enabled) = 0;
};

} // namespace HarrowlaneApp
