#include "UsageGauge/CodeSigning.h"

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace UsageGauge {
namespace {

namespace fs = std::filesystem;

class CodeSigning : public testing::Test {
protected:
    /// A signer that notes how it is called and finds the signature good or not.
    void makeSigner(int verdict) const {
        TestSupport::writeFile(signer_, "#!/bin/sh\necho \"$@\" >>'" + notes_.string() + "'\necho noise\n[ \"$1\" != " +
                                            "--verify ] || exit " + std::to_string(verdict) + "\nexit 9\n");
        fs::permissions(signer_, fs::perms{0755});
    }
    [[nodiscard]] std::string notes() const { return UsageModel::readWholeFile(notes_); }

    TestSupport::TemporaryFolder folder_;
    fs::path signer_ = folder_ / "signer";
    fs::path notes_ = folder_ / "notes";
};

TEST_F(CodeSigning, AGoodSignatureStays) {
    makeSigner(0);
    signAdHocIfUnsigned("/the shim", signer_.c_str());
    EXPECT_EQ(notes(), "--verify --strict /the shim\n");
}

TEST_F(CodeSigning, ABadOneIsReplaced) {
    makeSigner(1);
    signAdHocIfUnsigned("/the shim", signer_.c_str());
    EXPECT_EQ(notes(), "--verify --strict /the shim\n--force --sign - /the shim\n");
}

TEST_F(CodeSigning, WithoutASignerNothingHappens) {
    EXPECT_NO_THROW(signAdHocIfUnsigned("/the shim", signer_.c_str()));
}

TEST_F(CodeSigning, ASignerThatCannotStartIsDropped) {
    TestSupport::writeFile(signer_, "no program");
    fs::permissions(signer_, fs::perms{0755});
    EXPECT_NO_THROW(signAdHocIfUnsigned("/the shim", signer_.c_str()));
}

} // namespace
} // namespace UsageGauge
