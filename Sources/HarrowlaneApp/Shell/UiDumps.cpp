#include "HarrowlaneApp/Shell/UiDumps.h"

#include <algorithm>

#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Shell/ImageFile.h"
#include "HarrowlaneApp/Shell/ViewPictures.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/CalendarView.h"
#include "HarrowlaneApp/Views/ModelsView.h"
#include "HarrowlaneApp/Views/NowView.h"
#include "HarrowlaneApp/Views/SettingsView.h"
#include "HarrowlaneApp/Views/WeekTab.h"

namespace HarrowlaneApp::DumpUI {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::UsageSnapshot;

constexpr double calmer = 0.22;
constexpr double scale = 2.0;

double lowered(double level) {
    return std::max(level - calmer, 0.0);
}

void lower(std::vector<SeriesPoint>& curve) {
    for (SeriesPoint& point : curve) point.used = lowered(point.used);
}

/// Nothing is decided, and nothing kept.
class UndecidedPreferences : public Preferences {
public:
    [[nodiscard]] bool thresholdAlertsEnabled() const override { return true; }
    void setThresholdAlertsEnabled(bool /*enabled*/) override {}
    [[nodiscard]] QString appearancePreference() const override { return QStringLiteral("system"); }
    void setAppearancePreference(const QString& /*preference*/) override {}
};

/// The pictures on one week, all at one instant.
class Pictures {
public:
    explicit Pictures(Date now) : now_(now), sample_(PreviewData::overPace(now)) {}

    [[nodiscard]] UsageStore::Preview onSample() const {
        return {.snapshot = sample_, .installState = UsageGauge::StatusLineInstaller::State::installed};
    }

    [[nodiscard]] UsageStore::Preview firstRun(Readiness readiness) const {
        return {.snapshot = UsageSnapshot::warmingUp(now_), .readiness = readiness};
    }

    [[nodiscard]] UsageStore::Preview showingSample() const {
        UsageStore::Preview preview = firstRun(Readiness::noLogsFound);
        preview.sample = sample_;
        return preview;
    }

    [[nodiscard]] const UsageSnapshot& sample() const { return sample_; }

    [[nodiscard]] QImage now(UsageStore::Preview preview, Appearance appearance) const {
        const ApplicationLook look{Look{.appearance = appearance}};
        const auto store = UsageStore::preview(std::move(preview));
        NowView view({.store = *store,
                      .look = look,
                      .calendar = calendar_,
                      .now = [now = now_] { return now; },
                      .sampleWeek = PreviewData::overPace});
        return image(view, scale);
    }

    [[nodiscard]] QImage models() const {
        const ApplicationLook look{darkLook};
        auto* view = new ModelsView(look);
        view->setModels(sample_.models);
        return ViewPictures::onGround(view, look);
    }

    [[nodiscard]] QImage history() const {
        const ApplicationLook look{darkLook};
        auto* view = new CalendarView(look);
        view->setDays(sample_.calendar, calendar_);
        return ViewPictures::onGround(view, look);
    }

    [[nodiscard]] QImage settings() const {
        const ApplicationLook look{darkLook};
        const auto store = UsageStore::preview(onSample());
        UndecidedPreferences preferences;
        SettingsView view(look, {.store = *store, .preferences = preferences});
        return ViewPictures::of(view, SettingsView::fixedSize);
    }

    [[nodiscard]] QImage week(const UsageSnapshot& snapshot, Appearance appearance) const {
        const ApplicationLook look{Look{.appearance = appearance}};
        auto* view = new WeekTab(look, calendar_);
        view->setContent({.series = snapshot.weekSeries ? &*snapshot.weekSeries : nullptr});
        return ViewPictures::onGround(view, look);
    }

private:
    static constexpr Look darkLook{.appearance = Appearance::dark};

    Date now_;
    Calendar calendar_ = Calendar::local();
    UsageSnapshot sample_;
};

} // namespace

UsageSnapshot comfortable(UsageSnapshot snapshot) {
    if (!snapshot.weekSeries) return snapshot;
    UsageModel::WeekSeries& week = *snapshot.weekSeries;
    for (auto* curve : {&week.actual, &week.forecastLikely, &week.forecastHigh, &week.forecastLow}) lower(*curve);
    week.usedNow = lowered(week.usedNow);
    week.coneLikelyEnd.used = lowered(week.coneLikelyEnd.used);
    week.coneFastEnd.used = lowered(week.coneFastEnd.used);
    week.breaches = week.limitLevel && week.coneLikelyEnd.used > *week.limitLevel;
    if (!week.breaches) week.crossing.reset();
    return snapshot;
}

void render(const std::string& folder) {
    const ImageFolder images(folder);
    const auto save = [&](const char* name, const QImage& image) { images.write(image, name); };
    const Pictures pictures(SystemClock().now());
    const UsageSnapshot calm = comfortable(pictures.sample());
    save("now-light.png", pictures.now(pictures.onSample(), Appearance::light));
    save("now-dark.png", pictures.now(pictures.onSample(), Appearance::dark));
    save("models-dark.png", pictures.models());
    save("history-dark.png", pictures.history());
    save("settings.png", pictures.settings());
    save("now-first-run-no-logs.png", pictures.now(pictures.firstRun(Readiness::noLogsFound), Appearance::dark));
    save("now-first-run-no-usage.png", pictures.now(pictures.firstRun(Readiness::noUsageYet), Appearance::dark));
    save("bars.png", paceStrip());
    save("week-tab-dark.png", pictures.week(pictures.sample(), Appearance::dark));
    save("week-tab-light.png", pictures.week(pictures.sample(), Appearance::light));
    save("week-tab-calm-dark.png", pictures.week(calm, Appearance::dark));
    save("week-tab-calm-light.png", pictures.week(calm, Appearance::light));
    save("now-sample.png", pictures.now(pictures.showingSample(), Appearance::dark));
}

} // namespace HarrowlaneApp::DumpUI
