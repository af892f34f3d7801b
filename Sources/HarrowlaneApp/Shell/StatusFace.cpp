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

QList<MenuEntry> menu(std::optional<bool> startsAtLogin) {
    QList<MenuEntry> entries{
        {.id = MenuEntries::open, .label = QStringLiteral("Open"), .checked = {}},
        {.id = MenuEntries::refresh, .label = QStringLiteral("Refresh now"), .checked = {}},
        {.id = MenuEntries::settings, .label = QStringLiteral("Settings…"), .checked = {}},
    };
    if (startsAtLogin) {
        entries.append(
            {.id = MenuEntries::startAtLogin, .label = QStringLiteral("Start at login"), .checked = startsAtLogin});
    }
    entries.append(MenuEntry{});
    entries.append({.id = MenuEntries::quit, .label = QStringLiteral("Quit"), .checked = {}});
    return entries;
}

} // namespace

StatusItemFace statusFace(const StatusFaceQuestion& question) {
    const UsageModel::UsageSnapshot& snapshot = question.snapshot;
    return {
        .images = images(MeterArt::readingOf(snapshot)),
        .title = QString::fromUtf8(Desktop::displayName),
        .toolTipTitle = QString::fromStdString(snapshot.verdict.headline),
        .toolTipText = QString::fromStdString(snapshot.verdict.subtext),
        .menu = menu(question.startsAtLogin),
    };
}

} // namespace HarrowlaneApp
