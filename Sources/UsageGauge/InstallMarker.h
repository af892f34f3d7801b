#pragma once

#include <optional>
#include <string>

#include "UsageModel/Date.h"
#include "UsageModel/Fields.h"

namespace UsageGauge {

/// What the installer remembers of an installation, in order to undo it.
struct InstallMarker {
    /// True after a finished install.
    bool installed = false;
    /// Told for the curious; nothing rests on it.
    std::string shimPath;
    /// The former `statusLine` as JSON text. Absent where there was none.
    std::optional<std::string> priorStatusLineJSON;
    /// The settings file did not exist before the first install.
    bool createdSettings = false;
    UsageModel::Date installedAt;

    friend bool operator==(const InstallMarker&, const InstallMarker&) = default;
};

template <UsageModel::FieldsOf<InstallMarker> Self>
void visitFields(Self& self, auto&& visit) {
    visit("installed", self.installed);
    visit("shimPath", self.shimPath);
    visit("priorStatusLineJSON", self.priorStatusLineJSON);
    visit("createdSettings", self.createdSettings);
    visit("installedAt", self.installedAt);
}

} // namespace UsageGauge
