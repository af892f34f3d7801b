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
    const StatusItemFace face = statusFace(snapshotAt(0.4));
    EXPECT_EQ(face.title, QStringLiteral("Brindlewick"));
    EXPECT_EQ(face.toolTipTitle, QStringLiteral("On track"));
    EXPECT_EQ(face.toolTipText, QStringLiteral("Projected to reach about 70% by reset — with headroom."));
}

TEST(StatusFace, HasTheFourEntriesInOrder) {
    QStringList labels;
    for (const MenuEntry& entry : statusFace(snapshotAt(0.4)).menu) labels.append(entry.label);
    EXPECT_EQ(labels, QStringList({QStringLiteral("Open"), QStringLiteral("Refresh now"), QStringLiteral("Settings…"),
                                   QString(), QStringLiteral("Quit")}));
}

TEST(StatusFace, OffersTheMeterWideAndSquare) {
    const QList<QImage> images = statusFace(snapshotAt(0.4)).images;
    ASSERT_EQ(images.size(), 9);
    EXPECT_EQ(images[0].height(), 18);
    EXPECT_GT(images[0].width(), 2 * images[0].height());
    EXPECT_EQ(images[1].height(), 36);
    for (qsizetype i = 2; i < images.size(); ++i) EXPECT_EQ(images[i].width(), images[i].height());
}

TEST(StatusFace, FollowsTheUseAndIsTheSameForTheSame) {
    EXPECT_EQ(statusFace(snapshotAt(0.4)), statusFace(snapshotAt(0.4)));
    EXPECT_NE(statusFace(snapshotAt(0.4)), statusFace(snapshotAt(0.9)));
}

TEST(StatusFace, ShowsSomethingWhileNothingIsKnown) {
    const StatusItemFace face = statusFace(UsageSnapshot::warmingUp(Date{0}));
    for (const QImage& image : face.images) EXPECT_FALSE(image.isNull());
}

} // namespace
} // namespace HarrowlaneApp
