#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Views/ItemCanvas.h"

namespace HarrowlaneApp {

/// The week's figures, each on a panel of its own: side by side, or in rows where that would crowd them.
class TileRow : public ItemCanvas {
    Q_OBJECT

public:
    explicit TileRow(const ApplicationLook& look, QWidget* parent = nullptr);

    void setTiles(std::vector<WeekCopy::Tile> tiles);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    [[nodiscard]] double itemRadius() const override { return 10.0; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] int perRow(int width) const;
    [[nodiscard]] double tileWidth(int width) const;
    [[nodiscard]] int tileHeight(int width) const;
    void tellTiles();
    void paintTile(QPainter& painter, const WeekCopy::Tile& tile, const QRectF& box) const;

    std::vector<WeekCopy::Tile> tiles_;
};

} // namespace HarrowlaneApp
