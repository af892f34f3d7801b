#include "HarrowlaneApp/Store/BundledShim.h"

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {
namespace {

using TestSupport::writeFile;

TEST(BundledShim, IsLookedForAmongHelpersThenFormerNamesThenResources) {
    const TestSupport::TemporaryFolder bundle;
    EXPECT_FALSE(bundledShimURL(bundle.path()));
    for (const char* place : {"Contents/Resources/brindlewick-statusline", "Contents/Resources/harrow-lane-statusline",
                              "Contents/Resources/ferrowind-statusline", "Contents/Helpers/brindlewick-statusline"}) {
        writeFile(bundle / place, "");
        EXPECT_EQ(bundledShimURL(bundle.path()), bundle / place) << "it goes before all that are there already";
    }
}

TEST(BundledShim, IsNoFolderAndNoDanglingLink) {
    const TestSupport::TemporaryFolder bundle;
    std::filesystem::create_directories(bundle / "Contents/Helpers/brindlewick-statusline");
    std::filesystem::create_directories(bundle / "Contents/Resources");
    std::filesystem::create_symlink(bundle / "nowhere", bundle / "Contents/Resources/brindlewick-statusline");
    EXPECT_FALSE(bundledShimURL(bundle.path()));
}

TEST(BundledShim, IsNoneOutsideOfABundle) {
    EXPECT_FALSE(bundledShimURL("/nonexistent"));
    EXPECT_FALSE(bundledShimURL(""));
}

} // namespace
} // namespace HarrowlaneApp
