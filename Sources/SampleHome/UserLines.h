#pragma once

#include "SampleHome/Pen.h"
#include "SampleHome/SampleHome.h"
#include "SampleHome/Tools.h"

/// Lines of type "user": what the person wrote, and what tools returned. None is a turn, whatever usage it quotes.
namespace SampleHome::UserLines {

void putPrompt(Pen& pen);

/// The result of `call`, asked for by the last framed line. A Task's result tells what its helper was billed.
void putResult(Pen& pen, const ToolCall& call);

/// A result that is a picture: the longest lines there are.
void putImage(Pen& pen, const ToolCall& call);

/// The person stopped the answer.
void putInterruption(Pen& pen);

/// The summary that a conversation goes on from once its context is full.
void putCompactSummary(Pen& pen);

} // namespace SampleHome::UserLines
