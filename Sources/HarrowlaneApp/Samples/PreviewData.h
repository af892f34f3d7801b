#pragma once

#include "UsageModel/UsageSnapshot.h"

/// A believable week for those who have none yet, and for pictures. Made up as a whole: the engine has no part in it.
namespace HarrowlaneApp::PreviewData {

/// A week over its pace in its fourth day, with something of everything that the views show. Always the same for the
/// same instant.
[[nodiscard]] UsageModel::UsageSnapshot overPace(UsageModel::Date now);

} // namespace HarrowlaneApp::PreviewData
