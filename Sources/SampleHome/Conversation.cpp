#include "SampleHome/Conversation.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"
#include "SampleHome/SideLines.h"
#include "SampleHome/SyntheticTexts.h"
#include "SampleHome/UserLines.h"

#include <array>

namespace SampleHome {

using AssistantLines::Message;

namespace {

constexpr Spread stepsPerPrompt{{0, 1, 2, 5, 10, 18, 40, 60, 60}};

Speaker speakerOf(const FilePlan& plan) {
    return plan.kind == FileKind::SubAgent ? Speaker::SubAgent : Speaker::Session;
}

} // namespace

Conversation::Conversation(Pen& pen)
    : pen_(pen),
      meter_(pen.random()),
      model_(pickModel(pen.era(), speakerOf(pen.plan()), pen.random())),
      effort_(pickEffort(pen.era(), model_, pen.random())) {}

Tally Conversation::run() {
    SideLines::putOpening(pen_);
    while (pen_.room() > 0) exchange();
    return tally_;
}

void Conversation::putLineToTear() {
    pen_.allowOneMore();
    AssistantLines::putText(pen_, newMessage());
}

void Conversation::exchange() {
    Random& random = pen_.random();
    SideLines::putBeforePrompt(pen_);
    UserLines::putPrompt(pen_);
    for (std::uint64_t steps = stepsPerPrompt.draw(random); steps > 0 && pen_.room() > 0; --steps)
        if (!step()) return;
    const Message last = newMessage();
    count(last, AssistantLines::putText(pen_, last));
    SideLines::putAfterAnswer(pen_);
    if (random.chance(1, 60)) AssistantLines::putSynthetic(pen_, SyntheticTexts::harmless(random));
}

/// One message of the service and the work that it asks for. False when something put an end to the exchange.
bool Conversation::step() {
    Random& random = pen_.random();
    if (isLimitDue()) {
        hitLimit();
        return false;
    }
    if (meter_.isFull()) compact();
    if (random.chance(1, 400)) SideLines::putOddity(pen_);
    const Message message = newMessage();
    if (random.chance(2, 5)) count(message, AssistantLines::putThinking(pen_, message));
    if (random.chance(1, 4)) count(message, AssistantLines::putText(pen_, message));
    ask(message);
    if (!random.chance(1, 80)) return true;
    UserLines::putInterruption(pen_);
    return false;
}

void Conversation::ask(const Message& message) {
    const ToolCall call = newCall();
    count(message, AssistantLines::putToolUse(pen_, message, call));
    SideLines::putAroundTool(pen_, call);
    if (call.tool == Tool::Read && pen_.random().chance(1, 120))
        UserLines::putImage(pen_, call);
    else
        UserLines::putResult(pen_, call);
}

void Conversation::hitLimit() {
    ++limitHits_;
    const std::string text = SyntheticTexts::limit(pen_.instant(), pen_.random());
    if (AssistantLines::putSynthetic(pen_, text)) ++tally_.limitMessages;
}

void Conversation::compact() {
    SideLines::putCompactBoundary(pen_, meter_.context());
    UserLines::putCompactSummary(pen_);
    meter_.compact(pen_.random());
}

/// Limits are hit after some work, so they stand at even steps of the log, none at its start.
bool Conversation::isLimitDue() const {
    const std::uint64_t hits = pen_.plan().limitHits;
    return limitHits_ < hits && pen_.progress() * (hits + 1) >= (limitHits_ + 1) * 1'000'000;
}

Message Conversation::newMessage() {
    Random& random = pen_.random();
    return {.id = makeServiceId("msg_01", random),
            .requestId = makeServiceId("req_011C", random),
            .model = model_,
            .effort = effort_,
            .tokens = meter_.nextMessage(random)};
}

ToolCall Conversation::newCall() {
    Random& random = pen_.random();
    // In the order of Tool. A sub-agent starts no helper of its own.
    constexpr std::array<unsigned, 8> sessionWeights{46, 19, 14, 4, 8, 5, 2, 2};
    constexpr std::array<unsigned, 8> subAgentWeights{30, 40, 2, 1, 22, 0, 5, 0};
    const bool isHelper = pen_.plan().kind == FileKind::SubAgent;
    const std::size_t tool = random.weighted(isHelper ? subAgentWeights : sessionWeights);
    return {.tool = static_cast<Tool>(tool), .id = makeServiceId("toolu_01", random), .file = random.pick(fileNames)};
}

void Conversation::count(const Message& message, bool kept) {
    if (!kept) return;
    ++tally_.turns;
    tally_.tokens.input += message.tokens.input;
    tally_.tokens.output += message.tokens.output;
    tally_.tokens.cacheCreation += message.tokens.cacheCreation;
    tally_.tokens.cacheRead += message.tokens.cacheRead;
}

void writeQuietSession(Pen& pen) {
    SideLines::putOpening(pen);
    while (pen.room() > 0) SideLines::putIdleLine(pen);
}

} // namespace SampleHome
