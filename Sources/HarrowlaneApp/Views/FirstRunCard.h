#pragma once

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/PanelBox.h"
#include "HarrowlaneApp/Views/Turning.h"

namespace HarrowlaneApp {

/// What stands in place of the cards while there is nothing to show on them.
class FirstRunCard : public PanelBox {
    Q_OBJECT

public:
    explicit FirstRunCard(const ApplicationLook& look, QWidget* parent = nullptr);

    void setReadiness(Readiness readiness);

Q_SIGNALS:
    /// The user wants to see a sample week.
    void onSample();

private:
    HUDLabel* title_;
    HUDLabel* text_;
};

/// The spinner of the card that waits for the first refresh.
class Spinner : public HUDWidget {
    Q_OBJECT

public:
    explicit Spinner(const ApplicationLook& look, QWidget* parent = nullptr);

    [[nodiscard]] bool isTurning() const { return turning_->isTurning(); }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Turning* turning_;
};

/// What stands there until the first refresh is through.
class WarmingUpCard : public PanelBox {
    Q_OBJECT

public:
    explicit WarmingUpCard(const ApplicationLook& look, QWidget* parent = nullptr);
};

} // namespace HarrowlaneApp
