// The status line helper. Claude Code runs it on each redraw with a JSON document on its standard input: it keeps the
// official percentages of it for the program, and shows the status line that the user had before.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

#include <unistd.h>

#include "Shim/GaugeWriter.h"
#include "Shim/StatusText.h"
#include "Shim/WrappedCommand.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/StatusLineInput.h"

namespace {

using UsageModel::GaugeReading;

constexpr const char* wrappedVariable = "HWL_WRAPPED_STATUSLINE";

/// The value of a variable; empty where it is not set.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::optional<GaugeReading> readingIn(const std::string& document) {
    const auto input = UsageModel::StatusLineInput::decode(document);
    const double now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    return input ? input->gaugeReading(now, "statusLine") : std::nullopt;
}

void store(const GaugeReading& reading) {
    const std::string home = environment("HOME");
    if (home.empty()) return;
    try {
        Shim::storeGauge(reading, UsageModel::GaugePaths::gaugeFile(UsageModel::AppPaths(home)));
    } catch (const std::system_error&) {
        // The status line must appear all the same; that the gauge grows old is the program's to say.
    }
}

void print(const std::string& line) {
    if (line.empty()) return;
    std::signal(SIGPIPE, SIG_IGN); // nobody there to read it is no failure
    const std::string text = line + "\n";
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (count <= 0) return;
        written += static_cast<std::size_t>(count);
    }
}

} // namespace

int main() {
    const std::string document = UsageModel::readToEnd(STDIN_FILENO);
    const std::optional<GaugeReading> reading = readingIn(document);
    if (reading) store(*reading);

    const std::string wrapped = environment(wrappedVariable);
    // The command is the user's own; it may be a shim of its own kind.
    unsetenv(wrappedVariable);
    if (!wrapped.empty()) return Shim::runWrapped(wrapped, document);
    if (reading) print(Shim::statusText(*reading));
    return 0;
}
