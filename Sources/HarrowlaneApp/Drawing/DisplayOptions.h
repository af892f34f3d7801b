#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "HarrowlaneApp/Drawing/Look.h"

namespace HarrowlaneApp {

/// What the system says of how its user wants things drawn.
class AccessibilityDisplay {
public:
    AccessibilityDisplay() = default;
    AccessibilityDisplay(const AccessibilityDisplay&) = delete;
    AccessibilityDisplay& operator=(const AccessibilityDisplay&) = delete;
    virtual ~AccessibilityDisplay() = default;

    [[nodiscard]] virtual bool shouldReduceTransparency() const = 0;
    [[nodiscard]] virtual bool shouldIncreaseContrast() const = 0;
    /// Has `onNotice` called on the main thread whenever either may have changed. Asked for once; nothing is called
    /// after this object is gone.
    virtual void observe(std::function<void()> onNotice) = 0;
};

/// The two display options, shared by everything that draws. Main thread.
class DisplayOptions : public QObject {
    Q_OBJECT

public:
    /// Reads both options at once, and both again on every notice.
    explicit DisplayOptions(std::unique_ptr<AccessibilityDisplay> display, QObject* parent = nullptr);

    [[nodiscard]] bool reduceTransparency() const { return reduceTransparency_; }
    [[nodiscard]] bool increaseContrast() const { return increaseContrast_; }
    [[nodiscard]] Look look(Appearance appearance) const;

Q_SIGNALS:
    /// An option is not what it was: what is on the screen is to be drawn again.
    void changed();

private:
    void read();

    std::unique_ptr<AccessibilityDisplay> display_;
    bool reduceTransparency_ = false;
    bool increaseContrast_ = false;
};

} // namespace HarrowlaneApp
