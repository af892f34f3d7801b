#pragma once

#include <QBoxLayout>

#include "HarrowlaneApp/Views/CopyButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/PanelBox.h"
#include "HarrowlaneApp/Views/SpokenPicture.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// The one piece of advice, with its command to copy.
class RecommendationRow : public PanelBox {
    Q_OBJECT

public:
    explicit RecommendationRow(const ApplicationLook& look, QWidget* parent = nullptr);

    void setRecommendation(const UsageModel::Recommendation& rec);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QVBoxLayout* makeColumn();
    void showIcon(UsageModel::Recommendation::Kind kind);
    void arrangeFoot();

    SpokenPicture* icon_;
    HUDLabel* title_;
    HUDLabel* detail_;
    HUDLabel* impact_;
    CopyButton* copy_;
    /// Impact and command: side by side, or one above the other where they are too wide for that.
    QWidget* footBox_;
    QBoxLayout* foot_;
    /// As in the popover, until the card has a width of its own.
    int cardWidth_ = 316;
};

} // namespace HarrowlaneApp
