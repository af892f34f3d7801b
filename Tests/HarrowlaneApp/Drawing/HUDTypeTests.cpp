#include "HarrowlaneApp/Drawing/HUDType.h"

#include <string>

#include <QRawFont>

#include <gtest/gtest.h>

namespace {

using namespace HarrowlaneApp;
using HUDType::Weight;

TEST(HUDType, CarriesAllItsFaces) {
    EXPECT_TRUE(HUDType::registered());
}

TEST(HUDType, EveryWeightHasAFace) {
    for (const Weight weight : {Weight::bold, Weight::heavy, Weight::black}) {
        EXPECT_EQ(HUDType::faceName(weight), "ChakraPetch-Bold");
    }
    EXPECT_EQ(HUDType::faceName(Weight::semibold), "ChakraPetch-SemiBold");
    EXPECT_EQ(HUDType::faceName(Weight::medium), "ChakraPetch-Medium");
    for (const Weight weight : {Weight::regular, Weight::light, Weight::thin, Weight::ultraLight}) {
        EXPECT_EQ(HUDType::faceName(weight), "ChakraPetch-Regular");
    }
}

std::string resolvedFace(const HUDFont& font) {
    const QRawFont raw = QRawFont::fromFont(font.rounded());
    return (raw.familyName() + "/" + raw.styleName()).toStdString();
}

TEST(HUDType, AFontResolvesToTheFaceOfItsWeight) {
    EXPECT_EQ(resolvedFace(HUDType::text(12)), "Chakra Petch/Regular");
    EXPECT_EQ(resolvedFace(HUDType::text(12, Weight::thin)), "Chakra Petch/Regular");
    EXPECT_EQ(resolvedFace(HUDType::text(12, Weight::medium)), "Chakra Petch/Medium");
    EXPECT_EQ(resolvedFace(HUDType::text(12, Weight::semibold)), "Chakra Petch/SemiBold");
    EXPECT_EQ(resolvedFace(HUDType::text(12, Weight::black)), "Chakra Petch/Bold");
    EXPECT_EQ(resolvedFace(HUDType::display(12)), "Michroma/Regular");
    EXPECT_EQ(resolvedFace(HUDType::mono(10)), "Share Tech Mono/Regular");
}

// The signs that texts hold; a missing one would be drawn from another font, or as a box.
TEST(HUDType, EveryFaceHasTheSignsOfTheTexts) {
    for (const HUDFont& font :
         {HUDType::text(12), HUDType::text(12, Weight::bold), HUDType::display(12), HUDType::mono(12)}) {
        const QRawFont raw = QRawFont::fromFont(font.rounded());
        for (const QChar sign : QStringLiteral("0123456789.%×≈·—–÷")) {
            EXPECT_TRUE(raw.supportsCharacter(sign)) << QString(sign).toStdString();
        }
    }
}

} // namespace
