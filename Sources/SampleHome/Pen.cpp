#include "SampleHome/Pen.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"
#include "SampleHome/Put.h"

#include <algorithm>
#include <chrono>

namespace SampleHome {

namespace {

// Seconds that a line's time may lie back, where it does: lines of tools that ran side by side come in any order.
constexpr Spread stepsBack{{1, 2, 4, 15, 60, 200, 900, 1800, 1800}};

void putPadded(std::string& out, std::uint64_t number, std::size_t width) {
    const std::size_t start = out.size();
    put(out, number);
    out.insert(start, width - std::min(width, out.size() - start), '0');
}

} // namespace

Pen::Pen(const FilePlan& plan, LogFile& file, Random& random)
    : plan_(plan),
      file_(file),
      random_(random),
      dialect_(pickDialect(plan.age, random)),
      frame_(frame()) {}

std::string& Pen::beginFramed() {
    std::string& out = beginBare();
    put(out, R"({"parentUuid":)");
    if (lastUuid_.empty())
        put(out, "null");
    else
        put(out, "\"", lastUuid_, "\"");
    put(out, R"(,"isSidechain":)", plan_.kind == FileKind::SubAgent ? "true," : "false,");
    if (era() < Era::Titles) put(out, frame_, ",");
    return out;
}

bool Pen::endFramed(std::string_view extra) {
    lastUuid_ = makeUuid(random_);
    put(*line_, R"(,"uuid":")", lastUuid_, R"(","timestamp":")");
    putInstant(*line_);
    put(*line_, "\"", extra);
    if (era() >= Era::Titles) put(*line_, ",", frame_);
    put(*line_, "}");
    return endBare();
}

std::string& Pen::beginBare() {
    line_ = &file_.beginLine();
    lineStart_ = line_->size();
    return *line_;
}

bool Pen::endBare() {
    if (room() == 0 && !oneMore_) {
        line_->resize(lineStart_);
        return false;
    }
    oneMore_ = false;
    file_.endLine();
    return true;
}

void Pen::putInstant(std::string& out) {
    std::int64_t now = instant() + static_cast<std::int64_t>(random_.below(900));
    if (random_.chance(1, 150)) now -= static_cast<std::int64_t>(stepsBack.draw(random_)) * 1000;
    putTimestamp(out, std::min(now, plan_.end));
}

std::uint64_t Pen::room() const {
    return plan_.bytes - std::min(plan_.bytes, file_.bytes());
}

std::uint64_t Pen::fitting(std::uint64_t size) const {
    return std::min(size, room());
}

std::uint64_t Pen::progress() const {
    if (room() == 0) return 1'000'000;
    return file_.bytes() * 1'000'000 / plan_.bytes;
}

std::int64_t Pen::instant() const {
    std::uint64_t working = 1000;
    std::uint64_t rested = 0;
    for (const Pause& pause : plan_.pauses) {
        working -= pause.lengthShare;
        if (progress() >= pause.afterShare * 1000) rested += pause.lengthShare;
    }
    const auto share = static_cast<std::int64_t>(progress() * working / 1000 + rested * 1000);
    return plan_.start + (plan_.end - plan_.start) * share / 1'000'000;
}

std::string Pen::frame() const {
    const Project& project = projects[plan_.project];
    std::string text = R"("userType":"external",)";
    if (era() >= Era::Titles) put(text, R"("entrypoint":"cli",)");
    put(text, R"("cwd":"/home/user/)", project.name, R"(","sessionId":")", plan_.sessionId, R"(","version":")",
        dialect_.version, "\"");
    if (era() >= Era::Hooks) put(text, R"(,"gitBranch":")", project.branch, "\"");
    if (era() == Era::Slugs) put(text, R"(,"slug":")", project.slug, "\"");
    if (!plan_.agentId.empty()) put(text, R"(,"agentId":")", plan_.agentId, "\"");
    return text;
}

void putTimestamp(std::string& out, std::int64_t instant) {
    using namespace std::chrono;
    const sys_time<milliseconds> moment{milliseconds{instant}};
    const auto dayStart = floor<days>(moment);
    const year_month_day date{dayStart};
    const hh_mm_ss time{moment - dayStart};
    putPadded(out, static_cast<unsigned>(static_cast<int>(date.year())), 4);
    put(out, "-");
    putPadded(out, static_cast<unsigned>(date.month()), 2);
    put(out, "-");
    putPadded(out, static_cast<unsigned>(date.day()), 2);
    put(out, "T");
    putPadded(out, static_cast<std::uint64_t>(time.hours().count()), 2);
    put(out, ":");
    putPadded(out, static_cast<std::uint64_t>(time.minutes().count()), 2);
    put(out, ":");
    putPadded(out, static_cast<std::uint64_t>(time.seconds().count()), 2);
    put(out, ".");
    putPadded(out, static_cast<std::uint64_t>(time.subseconds().count()), 3);
    put(out, "Z");
}

} // namespace SampleHome
