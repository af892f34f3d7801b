#pragma once

#include "HarrowlaneApp/Copy/WhatIfTexts.h"
#include "HarrowlaneApp/Views/ChipRow.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/PanelBox.h"

class QVBoxLayout;

namespace HarrowlaneApp {

/// A short word with a dotted line beneath: there is more to read on it.
class EstimateMark : public HUDWidget {
    Q_OBJECT

public:
    explicit EstimateMark(const ApplicationLook& look, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Where the week would land if its rest ran on another model or at another effort. What is chosen is kept by whoever
/// shows the panel.
class WhatIfPanel : public PanelBox {
    Q_OBJECT

public:
    explicit WhatIfPanel(const ApplicationLook& look, QWidget* parent = nullptr);

    /// `choice` as it was chosen, whether or not all of it is in force.
    void setPanel(const WhatIfTexts::Panel& panel, const UsageModel::ModelAndEffort& choice);

Q_SIGNALS:
    /// The user wants this instead.
    void chosen(const UsageModel::ModelAndEffort& choice);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addHeader(QVBoxLayout& column);
    void addResultLine(QVBoxLayout& column);
    void showResult(const WhatIfTexts::Result& result);
    void chooseModel(std::size_t index);
    void chooseEffort(std::size_t index);

    WhatIfTexts::Panel panel_;
    UsageModel::ModelAndEffort choice_;
    TextButton* reset_ = nullptr;
    AxisRow* models_ = nullptr;
    AxisRow* efforts_ = nullptr;
    HUDLabel* landing_ = nullptr;
    HUDLabel* consequence_ = nullptr;
    EstimateMark* estimate_ = nullptr;
};

} // namespace HarrowlaneApp
