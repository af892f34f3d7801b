// How long the dashboard takes to open, to switch its tabs, and to answer a choice, until all is drawn.

#include <QApplication>

#include "HarrowlaneApp/Views/DashboardView.h"
#include "Support/Ratios.h"
#include "Support/SampleWeek.h"

namespace {

using namespace HarrowlaneApp;
using Tab = DashboardTabs::Tab;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;

constexpr double openSeconds = 0.1;
constexpr double switchSeconds = 0.016;

/// The dashboard on the sample week.
class Scene {
public:
    void forget() { view_.reset(); }
    void open() {
        view_ = std::make_unique<DashboardView>(week_.look, DashboardView::Surroundings{.store = *week_.store});
        view_->show();
        draw();
    }
    void switchTo(Tab tab) {
        view_->tabs().setCurrent(tab);
        draw();
    }
    void choose(const ModelAndEffort& choice) {
        view_->setChoice(choice);
        draw();
    }

private:
    /// Layouts and repaints come as events, and bring more of them.
    static void draw() {
        for (int round = 0; round < 5; ++round) QApplication::processEvents();
    }

    Bench::SampleWeek week_;
    std::unique_ptr<DashboardView> view_;
};

} // namespace

int main(int argc, char** argv) {
    Bench::useSharpScreen();
    const QApplication application(argc, argv);
    Scene opened;
    Scene scene;
    scene.open();
    constexpr int rounds = 50;
    Bench::add(
        "dashboard_open", rounds, [&] { opened.open(); }, [&] { opened.forget(); });
    const auto addSwitch = [&](const char* name, Tab from, Tab to) {
        Bench::add(
            name, rounds, [&scene, to] { scene.switchTo(to); }, [&scene, from] { scene.switchTo(from); });
    };
    addSwitch("switch_to_models", Tab::week, Tab::models);
    addSwitch("switch_to_history", Tab::models, Tab::history);
    addSwitch("switch_to_week", Tab::history, Tab::week);
    Bench::add(
        "pick_a_chip", rounds, [&] { scene.choose({.model = ModelClass::sonnet}); },
        [&] {
            scene.switchTo(Tab::week);
            scene.choose({});
        });
    return Bench::run(argc, argv,
                      {
                          {.subject = "dashboard_open", .limit = openSeconds},
                          {.subject = "switch_to_models", .limit = switchSeconds},
                          {.subject = "switch_to_history", .limit = switchSeconds},
                          {.subject = "switch_to_week", .limit = switchSeconds},
                          {.subject = "pick_a_chip", .limit = switchSeconds},
                      });
}
