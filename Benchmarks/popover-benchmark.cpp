// How long the popover takes to open, and to be drawn again as a whole.

#include <stdexcept>

#include <QApplication>

#include "HarrowlaneApp/Views/PopoverWindow.h"
#include "Support/Ratios.h"
#include "Support/SampleWeek.h"

namespace {

using namespace HarrowlaneApp;

constexpr double frameSeconds = 1.0 / 60.0;
constexpr double repaintSeconds = 0.008;

/// The popover on the sample week.
class Scene : public QObject {
public:
    Scene()
        : window_(new NowView({.store = *week_.store,
                               .look = week_.look,
                               .now = [] { return Bench::SampleWeek::now; },
                               .sampleWeek = PreviewData::overPace})) {
        if (window_.devicePixelRatioF() != 2.0) throw std::runtime_error("the screen is too coarse");
        window_.view().installEventFilter(this);
    }

    /// From the click until all is drawn.
    void open() {
        isDrawn_ = false;
        window_.open({150, 10});
        window_.resize(window_.view().sizeHint()); // the screen is too low for all of it
        while (!isDrawn_) QApplication::processEvents();
    }
    void close() {
        window_.close();
        QApplication::processEvents();
    }
    void repaint() { window_.repaint(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        isDrawn_ |= event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    Bench::SampleWeek week_;
    PopoverWindow window_;
    bool isDrawn_ = false;
};

} // namespace

int main(int argc, char** argv) {
    Bench::useSharpScreen();
    const QApplication application(argc, argv);
    Scene scene;
    constexpr int rounds = 50;
    scene.open();
    Bench::add("popover_repaint", rounds, [&] { scene.repaint(); });
    Bench::add(
        "popover_open", rounds, [&] { scene.open(); }, [&] { scene.close(); });
    return Bench::run(argc, argv,
                      {
                          {.subject = "popover_repaint", .limit = repaintSeconds},
                          {.subject = "popover_open", .limit = 2.0 * frameSeconds},
                      });
}
