#pragma once

#include <optional>
#include <vector>

#include <QPointer>
#include <QRectF>
#include <QString>

#include "HarrowlaneApp/Views/FocusRing.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// A widget that draws many small things, each of which has something to tell: on hover, to the keyboard, which walks
/// over them with the arrow keys, and to a screen reader, which finds a list of them.
class ItemCanvas : public HUDWidget {
    Q_OBJECT

public:
    struct Item {
        QRectF box;
        QString text;

        friend bool operator==(const Item&, const Item&) = default;
    };

    explicit ItemCanvas(const ApplicationLook& look, QWidget* parent = nullptr);

    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    /// The item that the keyboard stands on; absent where there is none.
    [[nodiscard]] std::optional<std::size_t> currentItem() const;
    /// The first item that holds the point.
    [[nodiscard]] std::optional<std::size_t> itemAt(const QPointF& point) const;

    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    /// Which corners an item's focus ring has.
    [[nodiscard]] virtual double itemRadius() const = 0;

    /// What there is to tell, in reading order. The keyboard stays on the item of the same place in the list.
    void setItems(std::vector<Item> items);
    void setCurrentItem(std::size_t index);

    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] std::optional<std::size_t> target(int key) const;
    [[nodiscard]] std::optional<std::size_t> neighbour(const QPointF& direction) const;
    void showRing();
    void reveal();
    void tell();

    std::vector<Item> items_;
    std::size_t current_ = 0;
    QPointer<FocusRing> ring_;
};

} // namespace HarrowlaneApp
