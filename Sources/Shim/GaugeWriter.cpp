#include "Shim/GaugeWriter.h"

#include <string>

#include <unistd.h>

#include "UsageModel/Files.h"
#include "UsageModel/Json.h"

namespace Shim {

void storeGauge(const UsageModel::GaugeReading& reading, const std::filesystem::path& gaugeFile) {
    UsageModel::createPrivateFolders(gaugeFile.parent_path());
    std::filesystem::path temporary = gaugeFile;
    temporary.concat(".").concat(std::to_string(getpid())).concat(".tmp");
    const std::string text = UsageModel::Json::toText(UsageModel::Json::encode(reading));
    UsageModel::replaceFile({.file = gaugeFile, .temporary = temporary, .content = text});
}

} // namespace Shim
