#include "SampleHome/UserLines.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"
#include "SampleHome/Put.h"
#include "SampleHome/TextPool.h"
#include "SampleHome/TokenMeter.h"

namespace SampleHome::UserLines {

namespace {

constexpr Spread promptBytes{{3, 15, 35, 80, 240, 900, 5000, 20000, 40000}};
constexpr Spread outputBytes{{0, 0, 0, 5, 140, 1700, 18000, 45000, 60000}};
constexpr Spread fileBytes{{10, 30, 100, 1200, 5000, 11000, 30000, 80000, 120000}};
constexpr Spread originalBytes{{200, 900, 2200, 5000, 10000, 19000, 50000, 120000, 250000}};
constexpr Spread findingBytes{{0, 0, 0, 50, 800, 3800, 14000, 30000, 40000}};
constexpr Spread reportBytes{{300, 800, 1600, 3200, 6000, 9000, 15000, 20000, 24000}};
constexpr Spread imageBytes{{20000, 50000, 80000, 130000, 220000, 380000, 800000, 1000000, 1200000}};

/// The same stretch of text twice, in the message and beside it, as the logs have it.
std::string drawText(Pen& pen, const Spread& spread, const TextPool& pool) {
    std::string text;
    pool.append(text, pen.random(), pen.fitting(spread.draw(pen.random()) * 2) / 2);
    return text;
}

std::string& openMessage(Pen& pen) {
    std::string& out = pen.beginFramed();
    if (pen.era() >= Era::Titles) put(out, R"("promptId":")", makeUuid(pen.random()), R"(",)");
    put(out, R"("type":"user","message":{"role":"user","content":)");
    return out;
}

/// Ends a result line with `details`, the JSON text of what stands beside the message.
void endResult(Pen& pen, std::string_view details) {
    std::string extra;
    extra.reserve(details.size() + 128);
    put(extra, R"(,"toolUseResult":)", details);
    if (pen.era() >= Era::Hooks) put(extra, R"(,"sourceToolAssistantUUID":")", pen.lastUuid(), "\"");
    pen.endFramed(extra);
}

void putResultLine(Pen& pen, const ToolCall& call, std::string_view content, std::string_view details) {
    std::string& out = openMessage(pen);
    put(out, R"([{"tool_use_id":")", call.id, R"(","type":"tool_result","content":)", content);
    if (call.tool == Tool::Bash) put(out, R"(,"is_error":false)");
    put(out, "}]}");
    endResult(pen, details);
}

std::string inQuotes(std::string_view text) {
    std::string result;
    result.reserve(text.size() + 2);
    put(result, "\"", text, "\"");
    return result;
}

std::string pathOf(const Pen& pen, const ToolCall& call) {
    std::string path;
    put(path, "/home/user/", projects[pen.plan().project].name, "/", call.file);
    return path;
}

void putBashResult(Pen& pen, const ToolCall& call) {
    const std::string text = drawText(pen, outputBytes, TextPool::code());
    std::string details;
    put(details, R"({"stdout":")", text, R"(","stderr":"","interrupted":false,"isImage":false})");
    putResultLine(pen, call, inQuotes(text), details);
}

void putReadResult(Pen& pen, const ToolCall& call) {
    const std::string text = drawText(pen, fileBytes, TextPool::code());
    const std::uint64_t count = text.size() / 40 + 1;
    std::string details;
    put(details, R"({"type":"text","file":{"filePath":")", pathOf(pen, call), R"(","content":")", text,
        R"(","numLines":)", count, R"(,"startLine":1,"totalLines":)", count, "}}");
    putResultLine(pen, call, inQuotes(text), details);
}

void putEditResult(Pen& pen, const ToolCall& call) {
    const std::string path = pathOf(pen, call);
    // Newer versions mostly leave out what the file held before.
    const bool isLeftOut = pen.era() >= Era::Slugs && pen.random().chance(2, 3);
    const std::string original = isLeftOut ? "" : drawText(pen, originalBytes, TextPool::code());
    const std::string change = drawText(pen, findingBytes, TextPool::code());
    std::string content;
    put(content, R"("The file )", path, R"( has been updated.")");
    std::string details;
    details.reserve(original.size() + 2 * change.size() + 400);
    put(details, R"({"filePath":")", path, R"(","oldString":"","newString":")", change, R"(","originalFile":")",
        original, R"(","structuredPatch":[{"oldStart":118,"oldLines":7,"newStart":118,"newLines":9,"lines":[" }","+)",
        change, R"("]}],"userModified":false,"replaceAll":false})");
    putResultLine(pen, call, content, details);
}

void putWriteResult(Pen& pen, const ToolCall& call) {
    const std::string path = pathOf(pen, call);
    std::string content;
    put(content, R"("File created successfully at: )", path, "\"");
    std::string details;
    put(details, R"({"type":"create","filePath":")", path, R"(","content":")",
        drawText(pen, fileBytes, TextPool::code()), R"(","structuredPatch":[],"originalFile":null})");
    putResultLine(pen, call, content, details);
}

void putGrepResult(Pen& pen, const ToolCall& call) {
    const std::string text = drawText(pen, findingBytes, TextPool::code());
    std::string details;
    put(details, R"({"mode":"content","numFiles":0,"filenames":[],"content":")", text, R"(","numLines":)",
        text.size() / 60, "}");
    putResultLine(pen, call, inQuotes(text), details);
}

void putTodoResult(Pen& pen, const ToolCall& call) {
    putResultLine(
        pen, call, R"("Todos have been modified successfully. Ensure that you continue to use the todo list.")",
        R"({"oldTodos":[],"newTodos":[{"content":"Read the reader","status":"completed","activeForm":"Reading"},)"
        R"({"content":"Write the test","status":"in_progress","activeForm":"Writing the test"}]})");
}

void putFetchResult(Pen& pen, const ToolCall& call) {
    const std::string text = drawText(pen, reportBytes, TextPool::prose());
    std::string details;
    put(details, R"({"bytes":)", text.size() * 31, R"(,"code":200,"codeText":"OK","result":")", text,
        R"(","durationMs":)", pen.random().between(400, 14'000),
        R"(,"url":"https://example.org/manual/readers.html"})");
    putResultLine(pen, call, inQuotes(text), details);
}

void putTaskResult(Pen& pen, const ToolCall& call) {
    const std::string text = drawText(pen, reportBytes, TextPool::prose());
    std::string content;
    put(content, R"([{"type":"text","text":")", text, R"("}])");
    TokenMeter helper(pen.random());
    const Tokens last = helper.nextMessage(pen.random());
    std::string details;
    put(details, R"({"status":"completed","agentId":")", makeHex(7, pen.random()), R"(","content":)", content);
    put(details, R"(,"totalDurationMs":)", pen.random().between(4'000, 240'000));
    put(details, R"(,"totalTokens":)", helper.context(), R"(,"totalToolUseCount":)", pen.random().between(1, 40), ",");
    putUsage(details, pen.era(), last);
    put(details, "}");
    putResultLine(pen, call, content, details);
}

/// A line whose message is one text.
void putPlainText(Pen& pen, const Spread& spread, std::string_view extra) {
    std::string& out = openMessage(pen);
    put(out, "\"");
    TextPool::prose().append(out, pen.random(), pen.fitting(spread.draw(pen.random())));
    put(out, "\"}");
    pen.endFramed(extra);
}

} // namespace

void putPrompt(Pen& pen) {
    constexpr std::string_view newest =
        R"(,"permissionMode":"acceptEdits","origin":{"kind":"human"},"promptSource":"cli")";
    constexpr std::string_view middle =
        R"(,"thinkingMetadata":{"level":"high","disabled":false,"triggers":[]},"todos":[],"permissionMode":"default")";
    if (pen.era() >= Era::Titles)
        putPlainText(pen, promptBytes, newest);
    else
        putPlainText(pen, promptBytes, pen.era() == Era::Plain ? std::string_view{} : middle);
}

void putResult(Pen& pen, const ToolCall& call) {
    switch (call.tool) {
    case Tool::Bash: return putBashResult(pen, call);
    case Tool::Read: return putReadResult(pen, call);
    case Tool::Edit: return putEditResult(pen, call);
    case Tool::Write: return putWriteResult(pen, call);
    case Tool::Grep: return putGrepResult(pen, call);
    case Tool::TodoWrite: return putTodoResult(pen, call);
    case Tool::WebFetch: return putFetchResult(pen, call);
    case Tool::Task: return putTaskResult(pen, call);
    }
}

void putImage(Pen& pen, const ToolCall& call) {
    std::string content = R"([{"type":"image","source":{"type":"base64","data":")";
    TextPool::base64().append(content, pen.random(), pen.fitting(imageBytes.draw(pen.random())));
    put(content, R"(","media_type":"image/png"}}])");
    putResultLine(pen, call, content, R"({"type":"image","file":{"type":"image/png","originalSize":48213}})");
}

void putInterruption(Pen& pen) {
    put(openMessage(pen), R"([{"type":"text","text":"[Request interrupted by user]"}]})");
    pen.endFramed();
}

void putCompactSummary(Pen& pen) {
    putPlainText(pen, reportBytes, R"(,"isVisibleInTranscriptOnly":true,"isCompactSummary":true)");
}

} // namespace SampleHome::UserLines
