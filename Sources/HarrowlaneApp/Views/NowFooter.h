#pragma once

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/IconButton.h"

namespace HarrowlaneApp {

/// The bottom of the popover: how old the numbers are, or what went wrong, and the buttons.
class NowFooter : public HUDWidget {
    Q_OBJECT

public:
    static constexpr int fullHeight = 40;

    explicit NowFooter(const ApplicationLook& look, QWidget* parent = nullptr);

    void setLine(const NowTexts::Footer& line);
    /// A refresh is under way.
    void setRefreshing(bool refreshing);

Q_SIGNALS:
    void refreshRequested();
    void dashboardRequested();
    void settingsRequested();
    void quitRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    IconButton* addButton(const char* objectName, std::string_view name, const IconButton::Icon& icon);
    void styleLine();

    HUDLabel* line_;
    IconButton* refresh_ = nullptr;
    bool isError_ = false;
};

} // namespace HarrowlaneApp
