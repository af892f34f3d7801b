#pragma once

#include "SampleHome/Pen.h"
#include "SampleHome/SampleHome.h"
#include "SampleHome/Tools.h"

#include <string>
#include <string_view>

/// Lines of type "assistant". All of them return whether the line was kept, as Pen does.
namespace SampleHome::AssistantLines {

/// One answer of the service. Each of its blocks is logged on a line of its own, all with the same counts.
struct Message {
    std::string id;
    std::string requestId;
    std::string_view model;
    std::string_view effort; ///< empty where none is recorded
    Tokens tokens;
};

bool putThinking(Pen& pen, const Message& message);
bool putText(Pen& pen, const Message& message);
bool putToolUse(Pen& pen, const Message& message, const ToolCall& call);

/// What the program itself says in the service's place: no model, no tokens. `text` is ready for JSON.
bool putSynthetic(Pen& pen, std::string_view text);

} // namespace SampleHome::AssistantLines
