#pragma once

#include "SampleHome/Dialect.h"
#include "SampleHome/LogFile.h"
#include "SampleHome/WeekPlan.h"

#include <string>
#include <string_view>

namespace SampleHome {

/// Writes the lines of one log: knows its clock, the frame of its lines, and when it has its size.
/// Lines are made by appending to what `beginFramed` or `beginBare` returned, up to the matching end.
class Pen {
public:
    /// All arguments must outlive the pen.
    Pen(const FilePlan& plan, LogFile& file, Random& random);

    /// Begins a line of the conversation: parent, session and, before Era::Titles, the place of work.
    std::string& beginFramed();
    /// Completes it with identifier, time and `extra` (members, each with a comma before it).
    /// False when the line was dropped since the log had its size already; the first line of a log is never dropped.
    bool endFramed(std::string_view extra = {});

    /// Begins a line that stands outside of the conversation.
    std::string& beginBare();
    /// Completes it. False when it was dropped.
    bool endBare();

    /// Appends the text of the next instant, without quotes. Never after the plan's end; now and then it lies before
    /// the one before it.
    void putInstant(std::string& out);

    /// Lets one more line through although the log has its size.
    void allowOneMore() { oneMore_ = true; }

    /// Bytes until the log has its size, 0 when it has.
    [[nodiscard]] std::uint64_t room() const;
    /// `size`, or less where a line of that size would go beyond the wished size.
    [[nodiscard]] std::uint64_t fitting(std::uint64_t size) const;
    /// Millionths of the wished size that are written.
    [[nodiscard]] std::uint64_t progress() const;
    /// Milliseconds since 1970 where the clock stands.
    [[nodiscard]] std::int64_t instant() const;

    [[nodiscard]] const FilePlan& plan() const { return plan_; }
    [[nodiscard]] Era era() const { return dialect_.era; }
    [[nodiscard]] Random& random() { return random_; }
    /// Identifier of the last framed line; empty before the first.
    [[nodiscard]] const std::string& lastUuid() const { return lastUuid_; }

private:
    [[nodiscard]] std::string frame() const;

    const FilePlan& plan_;
    LogFile& file_;
    Random& random_;
    Dialect dialect_;
    std::string frame_;
    std::string lastUuid_;
    std::string* line_ = nullptr;
    std::size_t lineStart_ = 0;
    bool oneMore_ = true;
};

/// Appends `instant` (milliseconds since 1970) as `YYYY-MM-DDTHH:MM:SS.mmmZ`.
void putTimestamp(std::string& out, std::int64_t instant);

} // namespace SampleHome
