#include "HarrowlaneApp/Platform/Linux/IconPixmaps.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {

namespace {

TEST(IconPixmaps, AreRowsOfAlphaRedGreenBlue) {
    QImage image(2, 2, QImage::Format_ARGB32);
    image.setPixel(0, 0, 0x11223344);
    image.setPixel(1, 0, 0xffa0b0c0);
    image.setPixel(0, 1, 0x00000000);
    image.setPixel(1, 1, 0x80ff0001);
    const QList<IconPixmap> pixmaps = pixmapsOf({image});
    ASSERT_EQ(pixmaps.size(), 1);
    EXPECT_EQ(pixmaps[0].bytes.toHex(), "11223344ffa0b0c00000000080ff0001");
}

TEST(IconPixmaps, TakePremultiplicationBack) {
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.setPixel(0, 0, qPremultiply(0x80ff0000));
    EXPECT_EQ(pixmapsOf({image})[0].bytes.toHex(), "80ff0000");
}

TEST(IconPixmaps, LeavePaddedRowsWithoutTheirPadding) {
    QImage image(3, 2, QImage::Format_RGB888);
    image.fill(qRgb(1, 2, 3));
    EXPECT_EQ(pixmapsOf({image})[0].bytes, QByteArray("\xff\x01\x02\x03", 4).repeated(6));
}

TEST(IconPixmaps, LeaveNullImagesOut) {
    EXPECT_TRUE(pixmapsOf({QImage(), QImage(0, 5, QImage::Format_ARGB32)}).isEmpty());
    EXPECT_TRUE(pixmapsOf({}).isEmpty());
}

} // namespace

} // namespace HarrowlaneApp
