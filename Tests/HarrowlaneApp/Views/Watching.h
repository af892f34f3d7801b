#pragma once

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

#include "HarrowlaneApp/Views/HUDLabel.h"

/// What a user finds on a view: by object name, by sight, by ear.
namespace ViewTests {

/// The widget of that name. Throws where there is none.
template <typename Widget>
Widget& find(const QWidget& view, const char* name) {
    auto* found = view.findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *found;
}

/// What the label of that name says; empty where it is not shown.
inline std::string textOf(const QWidget& view, const char* name) {
    const auto& label = find<HarrowlaneApp::HUDLabel>(view, name);
    return label.isVisibleTo(&view) ? label.text().toStdString() : std::string();
}

/// Layouts and repaints come as events, and bring more of them.
inline void settle() {
    for (int round = 0; round < 5; ++round) QApplication::processEvents();
}

/// Shows it at a size and lets it settle.
inline void show(QWidget& view, const QSize& size) {
    view.resize(size);
    view.show();
    view.activateWindow();
    QApplication::processEvents();
}

inline QImage picture(QWidget& view, double scale = 1.0) {
    QImage image(view.size() * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// What a screen reader finds inside a widget.
inline std::vector<std::string> heard(QWidget& widget) {
    std::vector<std::string> names;
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&widget);
    for (int index = 0; index < list->childCount(); ++index) {
        names.push_back(list->child(index)->text(QAccessible::Name).toStdString());
    }
    return names;
}

inline QAccessible::Role roleOf(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

/// Notes what is painted anew.
class PaintLog : public QObject {
public:
    explicit PaintLog(QWidget& widget) : widget_(widget) { widget.installEventFilter(this); }

    [[nodiscard]] const QRegion& painted() const { return painted_; }
    [[nodiscard]] int count() const { return count_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &widget_ && event->type() == QEvent::Paint) {
            painted_ |= static_cast<QPaintEvent*>(event)->region();
            ++count_;
        }
        return false;
    }

private:
    QWidget& widget_;
    QRegion painted_;
    int count_ = 0;
};

} // namespace ViewTests
