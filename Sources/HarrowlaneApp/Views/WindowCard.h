#pragma once

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/PanelBox.h"
#include "HarrowlaneApp/Views/SpokenPicture.h"

namespace HarrowlaneApp {

/// How one limit window stands: tokens against time, the burn rate, the reset.
class WindowCard : public PanelBox {
    Q_OBJECT

public:
    explicit WindowCard(const ApplicationLook& look, QWidget* parent = nullptr);

    void setWindow(const NowTexts::WindowCard& window);

private:
    void showPace(const NowTexts::WindowCard& window);
    void showReset(const NowTexts::WindowCard& window);

    HUDLabel* title_;
    SpokenPicture* badge_;
    SpokenPicture* ratio_;
    SpokenPicture* rails_;
    SpokenPicture* resets_;
    SpokenPicture* left_;
};

} // namespace HarrowlaneApp
