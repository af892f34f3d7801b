#pragma once

#include <memory>

#include <QtGlobal>

#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/ApplicationLook.h"

namespace Bench {

/// Gives this process a screen that nobody sees, of two pixels a point. To be called before the application is made.
inline void useSharpScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
}

/// What a view shows: a week with all that there can be to draw.
struct SampleWeek {
    static constexpr UsageModel::Date now{1772720100};

    std::unique_ptr<HarrowlaneApp::UsageStore> store =
        HarrowlaneApp::UsageStore::preview({.snapshot = HarrowlaneApp::PreviewData::overPace(now)});
    HarrowlaneApp::ApplicationLook look{HarrowlaneApp::Look{.appearance = HarrowlaneApp::Appearance::dark}};
};

} // namespace Bench
