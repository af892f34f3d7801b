#include "HarrowlaneApp/Store/BundledShim.h"

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {
namespace {

TEST(BundledShim, StandsAmongTheHelpersOrUnderAnEarlierNameAmongTheResources) {
    const TestSupport::TemporaryFolder bundle;
    const auto contents = bundle.path() / "Contents";
    EXPECT_EQ(bundledShim(bundle.path()), std::nullopt);

    const std::array<std::filesystem::path, 4> byPreference{
        contents / "Helpers/brindlewick-statusline",
        contents / "Resources/ferrowind-statusline",
        contents / "Resources/harrow-lane-statusline",
        contents / "Resources/brindlewick-statusline",
    };
    for (auto shim = byPreference.rbegin(); shim != byPreference.rend(); ++shim) {
        TestSupport::writeFile(*shim, "");
        EXPECT_EQ(bundledShim(bundle.path()), *shim);
    }
}

TEST(BundledShim, AFolderOfItsNameIsNone) {
    const TestSupport::TemporaryFolder bundle;
    std::filesystem::create_directories(bundle.path() / "Contents/Helpers/brindlewick-statusline");
    EXPECT_EQ(bundledShim(bundle.path()), std::nullopt);
}

} // namespace
} // namespace HarrowlaneApp
