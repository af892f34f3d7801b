#pragma once

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/SpokenPicture.h"

namespace HarrowlaneApp {

/// The button at the right end of the sample's capsule. It draws no capsule of its own.
class ExitButton : public HUDButton {
    Q_OBJECT

public:
    explicit ExitButton(const ApplicationLook& look, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;
};

/// The top of the popover: the wordmark and one chip.
class NowHeader : public QWidget {
    Q_OBJECT

public:
    /// Of the whole header; the widget ends `overlap` earlier, where what scrolls begins.
    static constexpr int fullHeight = 46;
    static constexpr int overlap = 8;

    explicit NowHeader(const ApplicationLook& look, QWidget* parent = nullptr);

    void setChip(NowTexts::HeaderChip chip);

Q_SIGNALS:
    /// The user has seen enough of the sample.
    void exited();

private:
    void fillSample();

    SpokenPicture* wordmark_;
    SpokenPicture* chip_;
    /// The sample's capsule, with its button on it.
    SpokenPicture* sample_;
    ExitButton* exit_;
};

} // namespace HarrowlaneApp
