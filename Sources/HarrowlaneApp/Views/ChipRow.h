#pragma once

#include <string_view>
#include <vector>

#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

/// A choice in a row of choices.
class ChipButton : public HUDButton {
    Q_OBJECT

public:
    struct Face {
        QString label;
        bool isNow = false;
        bool isSelected = false;
        bool costsMore = false;
        QString tooltip;

        friend bool operator==(const Face&, const Face&) = default;
    };

    explicit ChipButton(const ApplicationLook& look, QWidget* parent = nullptr);

    void setFace(const Face& face);
    [[nodiscard]] const Face& face() const { return face_; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    Face face_;
};

/// A title with what is so now, and the chips behind it, or below where the row is too narrow.
class AxisRow : public QWidget {
    Q_OBJECT

public:
    AxisRow(const ApplicationLook& look, std::string_view title, QWidget* parent = nullptr);

    void setNote(const QString& note);
    /// Chips that stay keep their place and the keyboard's focus.
    void setChips(const std::vector<ChipButton::Face>& faces);
    /// The width of all chips in a row.
    [[nodiscard]] int chipsWidth() const;
    /// The chips go below the title where not even chips of this width fit behind it, so that rows can agree.
    void setWidestChips(int width);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void clicked(int index);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] bool isStacked(int width) const;
    ChipButton* addChip();
    void place();

    const ApplicationLook& look_;
    HUDLabel* title_;
    HUDLabel* note_;
    std::vector<ChipButton*> chips_;
    /// So many of them are in use.
    std::size_t shownChips_ = 0;
    int widestChips_ = 0;
    /// The chips take on what is chosen, which is no click.
    bool isTakingOn_ = false;
};

} // namespace HarrowlaneApp
