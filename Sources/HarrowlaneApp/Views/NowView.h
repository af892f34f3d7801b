#pragma once

#include <functional>

#include <QImage>

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/FirstRunCard.h"
#include "HarrowlaneApp/Views/HUDScrollArea.h"
#include "HarrowlaneApp/Views/NowFooter.h"
#include "HarrowlaneApp/Views/NowHeader.h"
#include "HarrowlaneApp/Views/RecommendationRow.h"
#include "HarrowlaneApp/Views/WeekMiniCard.h"
#include "HarrowlaneApp/Views/WindowCard.h"

namespace HarrowlaneApp {

/// A small instrument panel that tells in one look how the user is doing right now. It holds no state but the store's,
/// and is drawn anew whenever that changes.
class NowView : public HUDWidget {
    Q_OBJECT

public:
    static constexpr int usualWidth = 340;
    static constexpr double cornerRadius = 14.0;

    /// What the view shows, and what it goes by. Store and look outlive the view.
    struct Setting {
        UsageStore& store;
        const ApplicationLook& look;
        UsageModel::Calendar calendar = UsageModel::Calendar::local();
        std::function<UsageModel::Date()> now;
        /// Makes the week that is shown to whoever has none yet.
        std::function<UsageModel::UsageSnapshot(UsageModel::Date)> sampleWeek;
    };

    /// How its window ends; square where the screen cannot show what shines through round corners.
    enum class Corners { round, square };

    explicit NowView(Setting setting, QWidget* parent = nullptr);

    void setCorners(Corners corners);
    [[nodiscard]] NowTexts::Body body() const { return body_; }

    /// Its natural size: with less height the cards scroll.
    [[nodiscard]] QSize sizeHint() const override;

    /// Reads store and clock again. It does so by itself when it is shown, and while it is, whenever the store changes.
    void read();

Q_SIGNALS:
    void dashboardRequested();
    void settingsRequested();
    void quitRequested();
    /// Its natural size may not be what it was.
    void resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildCards();
    void watchStore();
    void follow();
    void connectControls();
    void readCards(const UsageModel::UsageSnapshot& snapshot);
    void readWindow(WindowCard& card, const NowTexts::WindowCardQuestion& question);
    void showSample();
    void makeGround(double pixelsPerPoint);

    Setting setting_;
    NowHeader* header_;
    HUDScrollArea* scroll_;
    NowFooter* footer_;

    QWidget* column_;
    WindowCard* session_;
    WeekMiniCard* weekChart_;
    WindowCard* weekWindow_;
    RecommendationRow* recommendation_;
    WarmingUpCard* warmingUp_;
    FirstRunCard* firstRun_;

    NowTexts::Body body_ = NowTexts::Body::warmingUp;
    Corners corners_ = Corners::round;
    /// Kept, for it takes longer to make than all else that is drawn.
    QImage ground_;
    Look groundLook_;
};

/// The view at its natural size, as it looks on a screen with `scale` pixels a point. Null as `Images::drawn` tells.
[[nodiscard]] QImage image(NowView& view, double scale);

} // namespace HarrowlaneApp
