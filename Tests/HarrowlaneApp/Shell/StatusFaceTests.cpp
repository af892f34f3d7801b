#include "HarrowlaneApp/Shell/StatusFace.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

using UsageModel::Date;
using UsageModel::UsageSnapshot;

UsageSnapshot snapshotAt(double used) {
    UsageSnapshot snapshot = UsageSnapshot::warmingUp(Date{1772323200});
    snapshot.binding = UsageModel::WindowKind::session5h;
    snapshot.meters = {{.kind = UsageModel::WindowKind::session5h,
                        .used = used,
                        .elapsedFraction = 0.5,
                        .confidence = {.anchored = true, .secondsSinceAnchor = 60.0, .estimatedError = 0.01}}};
    snapshot.verdict = {.headline = "On track", .subtext = "Projected to reach about 70% by reset — with headroom."};
    return snapshot;
}

TEST(StatusFace, TellsTheVerdictAsItsTooltip) {
    const StatusItemFace face = statusFace({.snapshot = snapshotAt(0.4)});
    EXPECT_EQ(face.title, QStringLiteral("Brindlewick"));
    EXPECT_EQ(face.toolTipTitle, QStringLiteral("On track"));
    EXPECT_EQ(face.toolTipText, QStringLiteral("Projected to reach about 70% by reset — with headroom."));
}

QStringList labelsOf(const StatusItemFace& face) {
    QStringList labels;
    for (const MenuEntry& entry : face.menu) labels.append(entry.label);
    return labels;
}

TEST(StatusFace, HasItsEntriesInOrder) {
    EXPECT_EQ(labelsOf(statusFace({.snapshot = snapshotAt(0.4)})),
              QStringList({QStringLiteral("Open"), QStringLiteral("Refresh now"), QStringLiteral("Settings…"),
                           QString(), QStringLiteral("Quit")}));
}

TEST(StatusFace, OffersToStartAtLoginWhereThatCanBeDecided) {
    const StatusItemFace face = statusFace({.snapshot = snapshotAt(0.4), .startsAtLogin = true});
    EXPECT_EQ(labelsOf(face),
              QStringList({QStringLiteral("Open"), QStringLiteral("Refresh now"), QStringLiteral("Settings…"),
                           QStringLiteral("Start at login"), QString(), QStringLiteral("Quit")}));
    EXPECT_EQ(face.menu[3].checked, true);
}

TEST(StatusFace, OffersTheMeterWideAndSquare) {
    const QList<QImage> images = statusFace({.snapshot = snapshotAt(0.4)}).images;
    ASSERT_EQ(images.size(), 9);
    EXPECT_EQ(images[0].height(), 18);
    EXPECT_GT(images[0].width(), 2 * images[0].height());
    EXPECT_EQ(images[1].height(), 36);
    for (qsizetype i = 2; i < images.size(); ++i) EXPECT_EQ(images[i].width(), images[i].height());
}

TEST(StatusFace, FollowsTheUseAndIsTheSameForTheSame) {
    EXPECT_EQ(statusFace({.snapshot = snapshotAt(0.4)}), statusFace({.snapshot = snapshotAt(0.4)}));
    EXPECT_NE(statusFace({.snapshot = snapshotAt(0.4)}), statusFace({.snapshot = snapshotAt(0.9)}));
}

TEST(StatusFace, ShowsSomethingWhileNothingIsKnown) {
    const StatusItemFace face = statusFace({.snapshot = UsageSnapshot::warmingUp(Date{0})});
    for (const QImage& image : face.images) EXPECT_FALSE(image.isNull());
}

} // namespace
} // namespace HarrowlaneApp
