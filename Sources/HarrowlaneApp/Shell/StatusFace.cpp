#include "HarrowlaneApp/Shell/StatusFace.h"

#include <array>

#include "HarrowlaneApp/Drawing/MeterArt.h"
#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp {

namespace {

QList<QImage> images(const MeterArt::Reading& reading) {
    constexpr double height = 18.0;
    constexpr std::array<double, 2> scales{1.0, 2.0};
    // Panels choose by height or by area; with none near theirs they would squeeze the wide one into a square.
    constexpr std::array<int, 7> sides{22, 16, 24, 32, 44, 48, 64};
    QList<QImage> images;
    for (const double scale : scales) images.append(MeterArt::menuBarImage(reading, height, scale));
    for (const int side : sides) images.append(MeterArt::squareImage(reading, side));
    return images;
}

QList<MenuEntry> menu() {
    return {
        {.id = MenuEntries::open, .label = QStringLiteral("Open"), .checked = {}},
        {.id = MenuEntries::refresh, .label = QStringLiteral("Refresh now"), .checked = {}},
        {.id = MenuEntries::settings, .label = QStringLiteral("Settings…"), .checked = {}},
        {.checked = {}},
        {.id = MenuEntries::quit, .label = QStringLiteral("Quit"), .checked = {}},
    };
}

} // namespace

StatusItemFace statusFace(const UsageModel::UsageSnapshot& snapshot) {
    return {
        .images = images(MeterArt::readingOf(snapshot)),
        .title = QString::fromUtf8(Desktop::displayName),
        .toolTipTitle = QString::fromStdString(snapshot.verdict.headline),
        .toolTipText = QString::fromStdString(snapshot.verdict.subtext),
        .menu = menu(),
    };
}

} // namespace HarrowlaneApp
