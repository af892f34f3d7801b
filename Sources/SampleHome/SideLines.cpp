#include "SampleHome/SideLines.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"
#include "SampleHome/Put.h"
#include "SampleHome/TextPool.h"
#include "SampleHome/TokenMeter.h"

namespace SampleHome::SideLines {

namespace {

constexpr Spread titleBytes{{8, 12, 16, 24, 36, 50, 60, 60, 60}};
constexpr Spread promptBytes{{3, 20, 45, 90, 200, 300, 1200, 2000, 3000}};
constexpr Spread noticeBytes{{0, 0, 20, 90, 400, 1500, 2800, 3000, 3000}};
constexpr Spread attachmentBytes{{0, 0, 10, 40, 160, 1000, 9000, 20000, 30000}};
constexpr Spread consoleBytes{{0, 0, 0, 20, 160, 900, 4000, 8000, 9000}};
constexpr Spread taskPromptBytes{{20, 50, 90, 400, 1800, 3000, 5000, 6000, 6000}};

/// A bare line with one text of its own: `{"type":…,<key>:…,<middle>"sessionId":…}`.
struct NoteLine {
    std::string_view type;
    std::string_view key;
    Spread size;
};

void putNote(Pen& pen, const NoteLine& note) {
    std::string& out = pen.beginBare();
    put(out, R"({"type":")", note.type, R"(",")", note.key, R"(":")");
    TextPool::prose().append(out, pen.random(), pen.fitting(note.size.draw(pen.random())));
    put(out, R"(","sessionId":")", pen.plan().sessionId, R"("})");
    pen.endBare();
}

void putMode(Pen& pen, std::string_view type, std::string_view key, std::string_view value) {
    put(pen.beginBare(), R"({"type":")", type, R"(",")", key, R"(":")", value, R"(","sessionId":")",
        pen.plan().sessionId, R"("})");
    pen.endBare();
}

void putSummary(Pen& pen) {
    std::string& out = pen.beginBare();
    put(out, R"({"type":"summary","summary":")");
    TextPool::prose().append(out, pen.random(), pen.fitting(titleBytes.draw(pen.random())));
    put(out, R"(","leafUuid":")", makeUuid(pen.random()), R"("})");
    pen.endBare();
}

void putQueueOperation(Pen& pen, std::string_view operation) {
    std::string& out = pen.beginBare();
    put(out, R"({"type":"queue-operation","operation":")", operation, R"(","timestamp":")");
    pen.putInstant(out);
    put(out, R"(","sessionId":")", pen.plan().sessionId, "\"");
    if (operation == "enqueue") {
        put(out, R"(,"content":")");
        TextPool::prose().append(out, pen.random(), pen.fitting(noticeBytes.draw(pen.random())));
        put(out, "\"");
    }
    put(out, "}");
    pen.endBare();
}

void putSnapshot(Pen& pen) {
    Random& random = pen.random();
    const std::string id = makeUuid(random);
    std::string& out = pen.beginBare();
    put(out, R"({"type":"file-history-snapshot","messageId":")", id, R"(","snapshot":{"messageId":")", id,
        R"(","trackedFileBackups":{)");
    // The first names only, each once: a JSON object should not name one twice.
    const std::uint64_t count = random.below(fileNames.size());
    for (std::size_t i = 0; i < count; ++i) {
        put(out, i > 0 ? "," : "", "\"", fileNames[i], R"(":{"backupFileName":")", makeHex(16, random),
            R"(@v1","version":1,"backupTime":")");
        pen.putInstant(out);
        put(out, "\"}");
    }
    put(out, R"(},"timestamp":")");
    pen.putInstant(out);
    put(out, R"("},"isSnapshotUpdate":)", random.chance(1, 2) ? "true}" : "false}");
    pen.endBare();
}

void putTitles(Pen& pen) {
    putNote(pen, {.type = "custom-title", .key = "customTitle", .size = titleBytes});
    putNote(pen, {.type = "ai-title", .key = "aiTitle", .size = titleBytes});
    putNote(pen, {.type = "last-prompt", .key = "lastPrompt", .size = promptBytes});
}

void putAttachment(Pen& pen) {
    std::string& out = pen.beginFramed();
    put(out, R"("attachment":{"type":"hook_success","hookName":"UserPromptSubmit","content":")");
    TextPool::code().append(out, pen.random(), pen.fitting(attachmentBytes.draw(pen.random())));
    put(out, R"("},"type":"attachment")");
    pen.endFramed();
}

/// What the newest version writes in the place of progress lines.
void putNotices(Pen& pen) {
    Random& random = pen.random();
    if (random.chance(3, 4)) putAttachment(pen);
    if (random.chance(1, 5)) putTitles(pen);
    if (random.chance(1, 8)) putQueueOperation(pen, "enqueue");
}

void putStopHooks(Pen& pen) {
    put(pen.beginFramed(),
        R"("type":"system","subtype":"stop_hook_summary","hookCount":1,"hookInfos":[{"command":"notify --done"}],)",
        R"("hookErrors":[],"preventedContinuation":false,"stopReason":"","hasOutput":false,"level":"suggestion")");
    pen.endFramed(R"(,"toolUseID":"a012291c-77d6-4c4e-bf83-81b17ed2a598")");
}

void putApiError(Pen& pen) {
    put(pen.beginFramed(),
        R"("type":"system","subtype":"api_error","level":"error","error":{"status":529,"requestID":null},)",
        R"("retryInMs":529.8727459961376,"retryAttempt":1,"maxRetries":10)");
    pen.endFramed();
}

/// Ends a progress line, which names the tool's use twice.
void endProgress(Pen& pen, const ToolCall& call) {
    std::string extra;
    put(extra, R"(,"toolUseID":")", call.id, R"(","parentToolUseID":")", call.id, "\"");
    pen.endFramed(extra);
}

void putHookProgress(Pen& pen, const ToolCall& call, std::string_view event) {
    put(pen.beginFramed(), R"("type":"progress","data":{"type":"hook_progress","hookEvent":")", event,
        R"(","hookName":")", event, ":", toolName(call.tool), R"(","command":"callback"})");
    endProgress(pen, call);
}

void putBashProgress(Pen& pen, const ToolCall& call, std::uint64_t seconds) {
    std::string text;
    TextPool::code().append(text, pen.random(), pen.fitting(consoleBytes.draw(pen.random())));
    put(pen.beginFramed(), R"("type":"progress","data":{"type":"bash_progress","output":")", text,
        R"(","fullOutput":")", text, R"(","elapsedTimeSeconds":)", seconds, R"(,"totalLines":)", text.size() / 50, "}");
    endProgress(pen, call);
}

/// What a helper of a Task got from the service, inside the line that reports on it.
void putHelperMessage(Pen& pen, std::string& out, TokenMeter& helper) {
    Random& random = pen.random();
    put(out, R"({"type":"assistant","timestamp":")");
    pen.putInstant(out);
    put(out, R"(","message":{"model":")", pickModel(pen.era(), Speaker::SubAgent, random));
    put(out, R"(","id":")", makeServiceId("msg_01", random), R"(","type":"message","role":"assistant",)");
    put(out, R"("content":[{"type":"tool_use","id":")", makeServiceId("toolu_01", random));
    put(out, R"(","name":"Read","input":{"file_path":"/home/user"}}],"stop_reason":null,"stop_sequence":null,)");
    putUsage(out, pen.era(), helper.nextMessage(random));
    put(out, R"(},"requestId":")", makeServiceId("req_011C", random));
    put(out, R"(","uuid":")", makeUuid(random), "\"}");
}

void putHelperResult(Pen& pen, std::string& out) {
    put(out, R"({"type":"user","message":{"role":"user","content":[{"type":"text","text":")");
    TextPool::code().append(out, pen.random(), pen.fitting(attachmentBytes.draw(pen.random())));
    put(out, R"("}]},"uuid":")", makeUuid(pen.random()), R"("})");
}

void putAgentProgress(Pen& pen, const ToolCall& call) {
    Random& random = pen.random();
    TokenMeter helper(random);
    std::string tail = R"(,"normalizedMessages":[],"type":"agent_progress","prompt":")";
    TextPool::prose().append(tail, random, pen.fitting(taskPromptBytes.draw(random)));
    put(tail, R"(","agentId":")", makeHex(7, random), R"("})");
    const std::uint64_t messages = random.between(4, 16);
    for (std::uint64_t i = 0; i < messages; ++i) {
        std::string& out = pen.beginFramed();
        put(out, R"("type":"progress","data":{"message":)");
        if (i % 2 == 1)
            putHelperMessage(pen, out, helper);
        else
            putHelperResult(pen, out);
        put(out, tail);
        endProgress(pen, call);
    }
}

} // namespace

void putOpening(Pen& pen) {
    if (pen.era() < Era::Titles) {
        for (std::uint64_t i = pen.random().below(6); i > 0; --i) putSummary(pen);
    } else {
        putMode(pen, "permission-mode", "permissionMode", "default");
        putMode(pen, "mode", "mode", "normal");
    }
    if (pen.era() >= Era::Hooks) putSnapshot(pen);
}

void putBeforePrompt(Pen& pen) {
    Random& random = pen.random();
    if (pen.era() >= Era::Hooks && random.chance(1, 2)) putSnapshot(pen);
    if (pen.era() >= Era::Hooks && random.chance(1, 2)) {
        putQueueOperation(pen, "enqueue");
        putQueueOperation(pen, random.chance(1, 2) ? "dequeue" : "remove");
    }
    if (pen.era() >= Era::Titles) putAttachment(pen);
}

void putAfterAnswer(Pen& pen) {
    Random& random = pen.random();
    if (pen.era() >= Era::Hooks && random.chance(1, 2)) putStopHooks(pen);
    if (random.chance(1, 60)) putApiError(pen);
    if (pen.era() >= Era::Titles) putTitles(pen);
}

void putAroundTool(Pen& pen, const ToolCall& call) {
    if (pen.era() == Era::Plain) return;
    if (pen.era() == Era::Efforts) return putNotices(pen);
    if (call.tool == Tool::Task) return putAgentProgress(pen, call);
    Random& random = pen.random();
    if (random.chance(4, 5)) putHookProgress(pen, call, "PreToolUse");
    if (call.tool == Tool::Bash && random.chance(1, 2)) {
        const std::uint64_t count = random.between(1, 6);
        for (std::uint64_t i = 0; i < count; ++i) putBashProgress(pen, call, 2 + i);
    }
    if (random.chance(4, 5)) putHookProgress(pen, call, "PostToolUse");
}

void putCompactBoundary(Pen& pen, std::uint64_t tokens) {
    put(pen.beginFramed(), R"("type":"system","subtype":"compact_boundary","content":"Conversation compacted",)",
        R"("isMeta":false,"level":"info","compactMetadata":{"trigger":"auto","preTokens":)", tokens, "}");
    pen.endFramed();
}

void putOddity(Pen& pen) {
    std::string& out = pen.beginBare();
    if (pen.random().chance(1, 2)) put(out, "// copied from another machine, see docs/plan.md");
    pen.endBare();
}

void putIdleLine(Pen& pen) {
    switch (pen.random().below(4)) {
    case 0: return putSummary(pen);
    case 1: return putQueueOperation(pen, "enqueue");
    case 2: return putSnapshot(pen);
    default: return putNote(pen, {.type = "last-prompt", .key = "lastPrompt", .size = promptBytes});
    }
}

} // namespace SampleHome::SideLines
