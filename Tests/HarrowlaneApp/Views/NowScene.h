#pragma once

#include <memory>
#include <string>

#include <QTest>

#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Views/NowView.h"
#include "HarrowlaneApp/Views/Snapshots.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace ViewTests {

/// A popover's view on a store that shows what it is given.
struct NowScene {
    explicit NowScene(HarrowlaneApp::UsageStore::Preview preview,
                      const HarrowlaneApp::Look& shown = {.appearance = HarrowlaneApp::Appearance::dark})
        : store(HarrowlaneApp::UsageStore::preview(std::move(preview))),
          look(shown),
          view(std::make_unique<HarrowlaneApp::NowView>(setting(*store, look))) {}

    static HarrowlaneApp::NowView::Setting setting(HarrowlaneApp::UsageStore& store,
                                                   const HarrowlaneApp::ApplicationLook& look) {
        return {.store = store,
                .look = look,
                .calendar = UsageModel::Calendar::utc(),
                .now = [] { return thursday; },
                .sampleWeek = HarrowlaneApp::PreviewData::overPace};
    }

    /// As its window does it.
    void show() const {
        view->read();
        ViewTests::show(*view, view->sizeHint());
    }

    [[nodiscard]] QWidget& part(const char* name) const { return find<QWidget>(*view, name); }
    [[nodiscard]] bool shows(const char* name) const { return part(name).isVisibleTo(view.get()); }
    [[nodiscard]] std::string text(const char* name) const { return textOf(*view, name); }
    /// What a screen reader says there; empty where it is not shown.
    [[nodiscard]] std::string words(const char* name) const {
        if (!shows(name)) return {};
        return QAccessible::queryAccessibleInterface(&part(name))->text(QAccessible::Name).toStdString();
    }
    void click(const char* name) const { QTest::mouseClick(&part(name), Qt::LeftButton); }

    std::unique_ptr<HarrowlaneApp::UsageStore> store;
    HarrowlaneApp::ApplicationLook look;
    std::unique_ptr<HarrowlaneApp::NowView> view;
};

} // namespace ViewTests
