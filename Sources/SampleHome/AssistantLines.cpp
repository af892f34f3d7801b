#include "SampleHome/AssistantLines.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"
#include "SampleHome/Put.h"
#include "SampleHome/TextPool.h"
#include "SampleHome/TokenMeter.h"

namespace SampleHome::AssistantLines {

namespace {

constexpr Spread textBytes{{5, 40, 90, 190, 430, 950, 3200, 9000, 14000}};
constexpr Spread thoughtBytes{{20, 50, 100, 220, 480, 1000, 3000, 8000, 12000}};
constexpr Spread signatureBytes{{180, 240, 290, 360, 480, 760, 2000, 6000, 9000}};
constexpr Spread commandBytes{{12, 30, 50, 90, 180, 400, 1500, 4000, 6000}};
constexpr Spread editBytes{{20, 60, 120, 260, 600, 1300, 4500, 12000, 20000}};
constexpr Spread documentBytes{{200, 500, 1000, 2200, 4800, 9000, 20000, 50000, 80000}};

std::string& open(Pen& pen, const Message& message) {
    std::string& out = pen.beginFramed();
    if (pen.era() == Era::Plain)
        put(out, R"("message":{"id":")", message.id, R"(","type":"message","role":"assistant","model":")",
            message.model);
    else
        put(out, R"("message":{"model":")", message.model, R"(","id":")", message.id,
            R"(","type":"message","role":"assistant)");
    put(out, R"(","content":[)");
    return out;
}

bool close(Pen& pen, std::string& out, const Message& message, std::string_view stopReason) {
    const bool isNew = pen.era() >= Era::Titles;
    put(out, R"(],"stop_reason":)", isNew ? stopReason : "null", R"(,"stop_sequence":null,)");
    if (isNew) put(out, R"("stop_details":null,)");
    putUsage(out, pen.era(), message.tokens);
    if (isNew) put(out, R"(,"diagnostics":null)");
    put(out, R"(},"requestId":")", message.requestId, R"(","type":"assistant")");
    if (message.effort.empty()) return pen.endFramed();
    std::string effort;
    put(effort, R"(,"effort":")", message.effort, "\"");
    return pen.endFramed(effort);
}

void putFileInput(Pen& pen, std::string& out, const ToolCall& call) {
    put(out, R"("file_path":"/home/user/)", projects[pen.plan().project].name, "/", call.file, "\"");
}

void putLongText(Pen& pen, std::string& out, std::string_view key, std::uint64_t size, const TextPool& pool) {
    put(out, "\"", key, "\":\"");
    pool.append(out, pen.random(), pen.fitting(size));
    put(out, "\"");
}

void putEditInput(Pen& pen, std::string& out, const ToolCall& call) {
    const std::uint64_t size = pen.fitting(editBytes.draw(pen.random()));
    putFileInput(pen, out, call);
    put(out, ",");
    putLongText(pen, out, "old_string", size / 3, TextPool::code());
    put(out, ",");
    putLongText(pen, out, "new_string", size - size / 3, TextPool::code());
    put(out, R"(,"replace_all":false)");
}

void putInput(Pen& pen, std::string& out, const ToolCall& call) {
    Random& random = pen.random();
    switch (call.tool) {
    case Tool::Bash:
        putLongText(pen, out, "command", commandBytes.draw(random), TextPool::code());
        put(out, R"(,"description":"Build and run the tests of the reader")");
        break;
    case Tool::Read: putFileInput(pen, out, call); break;
    case Tool::Edit: putEditInput(pen, out, call); break;
    case Tool::Write:
        putFileInput(pen, out, call);
        put(out, ",");
        putLongText(pen, out, "content", documentBytes.draw(random), TextPool::code());
        break;
    case Tool::Grep: put(out, R"("pattern":"resume\\(.*offset","path":"src","output_mode":"content","-n":true)"); break;
    case Tool::TodoWrite:
        put(out, R"("todos":[{"content":"Read the reader","status":"completed","activeForm":"Reading the reader"},)",
            R"({"content":"Write the test","status":"in_progress","activeForm":"Writing the test"}])");
        break;
    case Tool::WebFetch:
        putLongText(pen, out, "prompt", commandBytes.draw(random), TextPool::prose());
        put(out, R"(,"url":"https://example.org/manual/readers.html")");
        break;
    case Tool::Task:
        putLongText(pen, out, "prompt", textBytes.draw(random) * 3, TextPool::prose());
        put(out, R"(,"description":"Look for other callers","subagent_type":"general-purpose")");
        break;
    }
}

} // namespace

bool putThinking(Pen& pen, const Message& message) {
    std::string& out = open(pen, message);
    put(out, R"({"type":"thinking",)");
    // The newest version logs the signature alone.
    const std::uint64_t thought = pen.era() >= Era::Efforts ? 0 : thoughtBytes.draw(pen.random());
    putLongText(pen, out, "thinking", thought, TextPool::prose());
    put(out, ",");
    putLongText(pen, out, "signature", signatureBytes.draw(pen.random()), TextPool::base64());
    put(out, "}");
    return close(pen, out, message, R"("tool_use")");
}

bool putText(Pen& pen, const Message& message) {
    std::string& out = open(pen, message);
    put(out, R"({"type":"text",)");
    putLongText(pen, out, "text", textBytes.draw(pen.random()), TextPool::prose());
    put(out, "}");
    return close(pen, out, message, R"("end_turn")");
}

bool putToolUse(Pen& pen, const Message& message, const ToolCall& call) {
    std::string& out = open(pen, message);
    put(out, R"({"type":"tool_use","id":")", call.id, R"(","name":")", toolName(call.tool), R"(","input":{)");
    putInput(pen, out, call);
    put(out, pen.era() >= Era::Slugs ? R"(},"caller":{"type":"direct"}})" : "}}");
    return close(pen, out, message, R"("tool_use")");
}

bool putSynthetic(Pen& pen, std::string_view text) {
    std::string& out = pen.beginFramed();
    put(out, R"("message":{"id":")", makeUuid(pen.random()),
        R"(","container":null,"model":"<synthetic>","role":"assistant","stop_reason":"stop_sequence",)",
        R"("stop_sequence":"","type":"message","usage":{"input_tokens":0,"output_tokens":0,)",
        R"("cache_creation_input_tokens":0,"cache_read_input_tokens":0,"server_tool_use":{"web_search_requests":0,)",
        R"("web_fetch_requests":0},"service_tier":null},"content":[{"type":"text","text":")", text,
        R"("}],"context_management":null},"isApiErrorMessage":true,"type":"assistant")");
    return pen.endFramed();
}

} // namespace SampleHome::AssistantLines
