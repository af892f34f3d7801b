#pragma once

#include "SampleHome/AssistantLines.h"
#include "SampleHome/Pen.h"
#include "SampleHome/TokenMeter.h"

namespace SampleHome {

/// What a log's conversation adds to the Summary.
struct Tally {
    std::uint64_t turns = 0;
    std::uint64_t limitMessages = 0;
    Tokens tokens;
};

/// One session from its first line to its last: prompts, answers, tools at work.
class Conversation {
public:
    /// `pen` must outlive it.
    explicit Conversation(Pen& pen);

    /// Writes lines until the log has its size.
    Tally run();

    /// Writes one more billed line, which is in no tally: one to be torn.
    void putLineToTear();

private:
    void exchange();
    bool step();
    void ask(const AssistantLines::Message& message);
    void hitLimit();
    void compact();
    [[nodiscard]] bool isLimitDue() const;
    [[nodiscard]] AssistantLines::Message newMessage();
    [[nodiscard]] ToolCall newCall();
    void count(const AssistantLines::Message& message, bool kept);

    Pen& pen_;
    TokenMeter meter_;
    std::string_view model_;
    std::string_view effort_;
    std::uint64_t limitHits_ = 0;
    Tally tally_;
};

/// Writes the lines of a session in which no assistant ever answered, until the log has its size.
void writeQuietSession(Pen& pen);

} // namespace SampleHome
