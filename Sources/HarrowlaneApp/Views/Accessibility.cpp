#include "HarrowlaneApp/Views/Accessibility.h"

#include <algorithm>
#include <vector>

#include <QAccessible>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QApplication>
#include <QPointer>
#include <QWindow>

#include "HarrowlaneApp/Views/ChartLegend.h"
#include "HarrowlaneApp/Views/GroundView.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/ItemCanvas.h"
#include "HarrowlaneApp/Views/PanelBox.h"
#include "HarrowlaneApp/Views/PopoverWindow.h"
#include "HarrowlaneApp/Views/ProseLabel.h"
#include "HarrowlaneApp/Views/SettingsControls.h"
#include "HarrowlaneApp/Views/SpokenPicture.h"
#include "HarrowlaneApp/Views/WeekChartView.h"
#include "HarrowlaneApp/Views/WeekHeader.h"
#include "HarrowlaneApp/Views/WhatIfPanel.h"

namespace HarrowlaneApp {

namespace {

/// An item of a canvas, by its place in the list: it may be gone.
class ItemAccessible : public QAccessibleInterface {
public:
    ItemAccessible(ItemCanvas& canvas, std::size_t index) : canvas_(&canvas), index_(index) {}

    [[nodiscard]] bool isValid() const override { return canvas_ && index_ < canvas_->items().size(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override { return canvas_ ? canvas_->window()->windowHandle() : nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(canvas_);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? canvas_->items()[index_].text : QString();
    }

    [[nodiscard]] QRect rect() const override {
        if (!isValid()) return {};
        const QRect box = canvas_->items()[index_].box.toAlignedRect();
        return {canvas_->mapToGlobal(box.topLeft()), box.size()};
    }

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = canvas_ && canvas_->focusPolicy() != Qt::NoFocus;
        state.readOnly = true;
        state.invalid = !isValid();
        if (!isValid()) return state;
        state.focused = canvas_->hasFocus() && canvas_->currentItem() == index_;
        state.invisible = !canvas_->isVisible();
        state.offscreen = canvas_->visibleRegion().intersected(canvas_->items()[index_].box.toAlignedRect()).isEmpty();
        return state;
    }

private:
    QPointer<ItemCanvas> canvas_;
    std::size_t index_;
};

/// A canvas as the list of its items.
class CanvasAccessible : public QAccessibleWidget {
public:
    explicit CanvasAccessible(ItemCanvas& canvas) : QAccessibleWidget(&canvas, QAccessible::List), canvas_(canvas) {}
    CanvasAccessible(const CanvasAccessible&) = delete;
    CanvasAccessible& operator=(const CanvasAccessible&) = delete;

    [[nodiscard]] int childCount() const override { return static_cast<int>(canvas_.items().size()); }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const auto place = static_cast<std::size_t>(index);
        if (index < 0 || place >= canvas_.items().size()) return nullptr;
        for (std::size_t made = ids_.size(); made <= place; ++made) {
            // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the registry owns it
            ids_.push_back(QAccessible::registerAccessibleInterface(new ItemAccessible(canvas_, made)));
        }
        return QAccessible::accessibleInterface(ids_[place]);
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto found = canvas_.itemAt(canvas_.mapFromGlobal(QPoint(x, y)));
        return found ? child(static_cast<int>(*found)) : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int index = 0; index < static_cast<int>(ids_.size()); ++index) {
            if (QAccessible::accessibleInterface(ids_[static_cast<std::size_t>(index)]) == wanted) return index;
        }
        return -1;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        const auto current = canvas_.currentItem();
        return canvas_.hasFocus() && current ? child(static_cast<int>(*current)) : nullptr;
    }

protected:
    ~CanvasAccessible() override {
        for (const QAccessible::Id id : ids_) QAccessible::deleteAccessibleInterface(id);
    }

private:
    ItemCanvas& canvas_;
    /// Made as they are asked for, and owned.
    mutable std::vector<QAccessible::Id> ids_;
};

/// A drawing, by its words; an ornament has none, for now.
class PictureAccessible : public QAccessibleWidget {
public:
    explicit PictureAccessible(SpokenPicture& picture) : QAccessibleWidget(&picture) {}

    [[nodiscard]] QAccessible::Role role() const override {
        return widget()->accessibleName().isEmpty() ? QAccessible::Graphic : QAccessible::StaticText;
    }
};

/// The program as all of its windows. Qt leaves popups out, and a reader that asks what is there would never come to
/// the popover.
class ApplicationAccessible : public QAccessibleApplication {
public:
    [[nodiscard]] int childCount() const override {
        return QAccessibleApplication::childCount() + static_cast<int>(popups().size());
    }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const int others = QAccessibleApplication::childCount();
        if (index < others) return QAccessibleApplication::child(index);
        const auto open = popups();
        const auto place = static_cast<std::size_t>(index - others);
        return place < open.size() ? open[place] : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override {
        const auto open = popups();
        const auto found = std::ranges::find(open, wanted);
        if (found == open.end()) return QAccessibleApplication::indexOfChild(wanted);
        return QAccessibleApplication::childCount() + static_cast<int>(found - open.begin());
    }

private:
    /// The open ones that belong to no window.
    [[nodiscard]] std::vector<QAccessibleInterface*> popups() const {
        std::vector<QAccessibleInterface*> open;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowType() != Qt::Popup || !widget->isVisible()) continue;
            QAccessibleInterface* popup = QAccessible::queryAccessibleInterface(widget);
            if (popup->parent() == nullptr || popup->parent() == this) open.push_back(popup);
        }
        return open;
    }
};

template <typename... Kinds>
bool isAny(const QObject* object) {
    return (... || (qobject_cast<const Kinds*>(object) != nullptr));
}

/// What a widget of ours is that Qt has no role for; none where it has one, or where it is not ours.
QAccessible::Role roleOf(const QObject* object) {
    if (isAny<PopoverWindow>(object)) return QAccessible::Dialog;
    // Dashboard and settings; without a role of their own they would be mere fillers.
    if (isAny<GroundView>(object)) return QAccessible::Window;
    if (isAny<HUDLabel, ProseLabel, SettingsBadge, ChipLabel, ChartLegend, EstimateMark>(object))
        return QAccessible::StaticText;
    if (isAny<WeekChartView>(object)) return QAccessible::Chart;
    if (isAny<PanelBox, SegmentedPicker>(object)) return QAccessible::Grouping;
    return QAccessible::NoRole;
}

/// Qt asks for each class of a widget, from the last derived on.
QAccessibleInterface* accessibleFor(const QString& /*className*/, QObject* object) {
    if (object == QCoreApplication::instance()) return new ApplicationAccessible;
    if (auto* canvas = qobject_cast<ItemCanvas*>(object)) return new CanvasAccessible(*canvas);
    if (auto* picture = qobject_cast<SpokenPicture*>(object)) return new PictureAccessible(*picture);
    const QAccessible::Role role = roleOf(object);
    return role == QAccessible::NoRole ? nullptr : new QAccessibleWidget(static_cast<QWidget*>(object), role);
}

} // namespace

void installAccessibility() {
    static const bool once = [] {
        QAccessible::installFactory(accessibleFor);
        return true;
    }();
    static_cast<void>(once);
}

} // namespace HarrowlaneApp
