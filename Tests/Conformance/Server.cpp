#include "Conformance/Server.h"

#include <istream>
#include <ostream>

#include "UsageModel/Json.h"

namespace Conformance {

namespace {

namespace Json = UsageModel::Json;

nlohmann::json failure(std::string_view words) {
    return {{"error", words}};
}

nlohmann::json perform(const Operations& operations, const nlohmann::json& request) {
    if (!request.is_object()) return failure("the request is no object");
    const auto name = request.find("op");
    if (name == request.end() || !name->is_string()) return failure("the request names no operation");
    const auto operation = operations.find(name->get_ref<const std::string&>());
    if (operation == operations.end()) return failure("unknown operation");

    static const nlohmann::json noArguments = nlohmann::json::object();
    const auto found = request.find("args");
    const nlohmann::json& arguments = found == request.end() ? noArguments : *found;
    if (!arguments.is_object()) return failure("the arguments are no object");
    return {{"ok", operation->second(Arguments(arguments))}};
}

} // namespace

Operations allOperations() {
    Operations operations;
    addRecordOperations(operations);
    addLineOperations(operations);
    addEngineOperations(operations);
    addForecastOperations(operations);
    addCopyOperations(operations);
    addAlertOperations(operations);
    return operations;
}

nlohmann::json answer(const Operations& operations, std::string_view request) {
    try {
        return perform(operations, Json::parse(request));
    } catch (const std::exception& error) {
        return failure(error.what());
    }
}

void serve(const Operations& operations, std::istream& in, std::ostream& out) {
    for (std::string line; std::getline(in, line);) out << Json::toText(answer(operations, line)) << std::endl;
}

} // namespace Conformance
