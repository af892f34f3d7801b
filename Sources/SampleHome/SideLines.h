#pragma once

#include "SampleHome/Pen.h"
#include "SampleHome/Tools.h"

/// The lines around a conversation. None is a turn.
namespace SampleHome::SideLines {

/// What stands at the top of a log.
void putOpening(Pen& pen);

/// What precedes a prompt and what follows the last answer to it.
void putBeforePrompt(Pen& pen);
void putAfterAnswer(Pen& pen);

/// Hooks and signs of life of a running tool, from none to many. Those of a Task may carry its helper's messages with
/// their usage.
void putAroundTool(Pen& pen, const ToolCall& call);

/// Marks the place from which the conversation goes on with a summary. `tokens` is the context's size before.
void putCompactBoundary(Pen& pen, std::uint64_t tokens);

/// A comment or an empty line: no JSON at all.
void putOddity(Pen& pen);

/// One of the lines that a session leaves which nobody used.
void putIdleLine(Pen& pen);

} // namespace SampleHome::SideLines
