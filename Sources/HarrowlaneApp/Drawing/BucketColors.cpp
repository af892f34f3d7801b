#include "HarrowlaneApp/Drawing/BucketColors.h"

#include <array>

namespace HarrowlaneApp {

namespace {

ColorPair shares(const std::array<float, 3>& dark, const std::array<float, 3>& light) {
    return {.dark = QColor::fromRgbF(dark[0], dark[1], dark[2]),
            .light = QColor::fromRgbF(light[0], light[1], light[2])};
}

} // namespace

const QColor& bucketColor(ChartBucket bucket, Appearance appearance) {
    static const std::array<ColorPair, 4> colors{
        shares({0.85F, 0.35F, 0.15F}, {0.88F, 0.39F, 0.19F}),
        shares({0.80F, 0.30F, 0.71F}, {0.62F, 0.28F, 0.55F}),
        shares({0.22F, 0.53F, 0.90F}, {0.16F, 0.47F, 0.84F}),
        shares({0.10F, 0.62F, 0.44F}, {0.10F, 0.61F, 0.43F}),
    };
    return colors.at(UsageModel::caseIndex(bucket)).resolved(appearance);
}

} // namespace HarrowlaneApp
