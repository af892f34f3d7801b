#pragma once

#include <filesystem>

namespace UsageGauge {

inline constexpr const char* codesign = "/usr/bin/codesign";

/// Gives an executable an ad hoc signature where its own does not hold, by the system's program `signer`, so that a
/// system which demands one will run it. Waits for that program. Failures are dropped; a system without it needs none.
void signAdHocIfUnsigned(const std::filesystem::path& executable, const char* signer = codesign);

} // namespace UsageGauge
