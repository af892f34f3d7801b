#include "Conformance/Operations.h"

#include <memory>

#include <absl/strings/escaping.h>

#include "UsageIngest/LogLineParser.h"
#include "UsageIngest/TimeParsing.h"

namespace Conformance {

namespace {

using nlohmann::json;
using UsageIngest::LogLineParser;
using UsageIngest::ParsedLine;

// A line that is no UTF-8 cannot stand in a JSON text: it comes in base 64.
std::string lineBytes(const Arguments& args) {
    const auto encoded = args.find<std::string>("lineBase64");
    if (!encoded) return args.get<std::string>("line");
    std::string bytes;
    if (!absl::Base64Unescape(*encoded, &bytes)) throw UsageModel::Json::Error("lineBase64: not base 64");
    return bytes;
}

json parsedForm(const ParsedLine& parsed) {
    if (const auto* event = std::get_if<UsageModel::UsageEvent>(&parsed)) {
        return {{"case", "usage"}, {"value", result(*event)}};
    }
    if (const auto* anchor = std::get_if<UsageModel::Anchor>(&parsed)) {
        return {{"case", "anchor"}, {"value", result(*anchor)}};
    }
    return {{"case", "ignored"}};
}

} // namespace

void addLineOperations(Operations& operations) {
    // One parser for all requests, as an import has: what it kept of one line would show in the next answer.
    operations["LogLineParser.parse"] = [parser = std::make_shared<LogLineParser>()](const Arguments& args) {
        return parsedForm(parser->parse(lineBytes(args)));
    };
    operations["TimeParsing.iso8601UTC"] = [](const Arguments& args) {
        return result(UsageIngest::TimeParsing::iso8601UTC(args.get<std::string>("text")));
    };
}

} // namespace Conformance
