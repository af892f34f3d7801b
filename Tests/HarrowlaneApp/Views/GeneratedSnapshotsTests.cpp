#include "HarrowlaneApp/Views/GeneratedSnapshots.h"

#include <cmath>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Views/DashboardView.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;

constexpr std::uint64_t snapshotCount = 2500;
// A picture takes a hundred times as long as a layout.
constexpr std::uint64_t pictureEvery = 15;

bool isFinite(const QRectF& box) {
    return std::isfinite(box.x()) && std::isfinite(box.y()) && std::isfinite(box.width()) &&
           std::isfinite(box.height());
}

void expectSoundPlaces(const QWidget& view, std::uint64_t seed) {
    for (const auto* canvas : view.findChildren<ItemCanvas*>()) {
        for (const ItemCanvas::Item& item : canvas->items()) {
            ASSERT_TRUE(isFinite(item.box)) << canvas->objectName().toStdString() << " of seed " << seed;
            ASSERT_GE(item.box.width(), 0.0);
            ASSERT_FALSE(item.text.isEmpty());
        }
    }
    for (const auto* widget : view.findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        ASSERT_LT(widget->height(), QWIDGETSIZE_MAX) << widget->objectName().toStdString() << " of seed " << seed;
        ASSERT_LT(widget->width(), 20000) << widget->objectName().toStdString() << " of seed " << seed;
    }
}

// Qt says so where it is asked to draw at a place that is no number.
int complaints = 0;

void countComplaints(QtMsgType /*type*/, const QMessageLogContext& /*place*/, const QString& message) {
    if (message.contains(QStringLiteral("NaN"))) ++complaints;
}

TEST(GeneratedSnapshots, BringNoViewDownAndStayInPlace) {
    const ApplicationLook dark{Look{.appearance = Appearance::dark}};
    const auto store = UsageStore::preview({.snapshot = UsageModel::UsageSnapshot::warmingUp({})});
    DashboardView view(dark, {.store = *store, .calendar = *UsageModel::Calendar::inZone("Africa/Cairo")});
    show(view, DashboardView::leastSize);
    complaints = 0;
    const QtMessageHandler usual = qInstallMessageHandler(countComplaints);
    const std::array<QSize, 3> sizes{DashboardView::leastSize, DashboardView::firstSize, QSize(1600, 900)};
    for (std::uint64_t seed = 0; seed < snapshotCount; ++seed) {
        store->setSampleSnapshot(generatedSnapshot(seed));
        view.tabs().setCurrent(static_cast<DashboardTabs::Tab>(seed % 3));
        if (seed % 5 == 0) view.resize(sizes.at(seed / 5 % sizes.size()));
        if (seed % 2 == 0) view.setChoice({.model = UsageModel::ModelClass::sonnet});
        QApplication::processEvents();
        expectSoundPlaces(view, seed);
        if (seed % pictureEvery == 0) {
            ASSERT_FALSE(picture(view).isNull());
        }
        ASSERT_EQ(complaints, 0) << "of seed " << seed;
        if (HasFatalFailure()) return;
    }
    qInstallMessageHandler(usual);
}

} // namespace
