// How long the status line helper takes from its start to its end, beside a program that does nothing.
//
// The medians of a thousand runs each, in turns. A document without limits leaves no file to write.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "SampleHome/SampleHome.h"
#include "Support/Figures.h"
#include "Support/Processes.h"
#include "Support/TemporaryTree.h"

namespace {

constexpr int runs = 1000;
constexpr double now = 1'790'000'000;
constexpr double memoryLimit = 3e6;

struct Subject {
    std::string program;
    std::string input;
    std::vector<double> seconds;
};

void runOnce(Subject& subject, char** environment) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, subject.input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::array<char*, 2> arguments{subject.program.data(), nullptr};

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = -1;
    if (posix_spawn(&child, subject.program.c_str(), &actions, nullptr, arguments.data(), environment) == 0)
        waitpid(child, &status, 0);
    subject.seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) throw std::runtime_error(subject.program + " failed");
}

/// The largest resident size, asked for by the command that the helper wraps, when its own work is done.
double residentBytes(const std::string& helper, const std::string& document) {
    const std::string command =
        "HWL_WRAPPED_STATUSLINE='sed -n \"s/VmHWM: *\\t*//p\" /proc/$PPID/status' '" + helper + "' <'" + document + "'";
    FILE* pipe = popen(command.c_str(), "r");
    double kibibytes = 0.0;
    if (std::fscanf(pipe, "%lf", &kibibytes) != 1) throw std::runtime_error("no size told");
    pclose(pipe);
    return kibibytes * 1024.0;
}

void write(const std::string& file, const std::string& text) {
    std::ofstream(file) << text;
}

} // namespace

int main(int /*argc*/, char** argv) {
    const std::string helper = Bench::programBeside(argv[0], "brindlewick-statusline");
    const Bench::TemporaryTree tree({.bytes = 1});
    const std::filesystem::path home = tree.projects();
    const std::string document = home / "document.json";
    const std::string withoutLimits = home / "without-limits.json";
    std::string text = SampleHome::statusLineDocument(now);
    write(document, text);
    write(withoutLimits, text.replace(text.find("rate_limits"), 11, "other_thing"));

    std::string homeSetting = "HOME=" + home.string();
    std::array<char*, 2> environment{homeSetting.data(), nullptr};
    Subject nothing{"/bin/true", document, {}};
    Subject whole{helper, document, {}};
    Subject withoutFile{helper, withoutLimits, {}};
    for (int i = 0; i < runs; ++i) {
        for (Subject* subject : {&nothing, &whole, &withoutFile}) runOnce(*subject, environment.data());
    }
    setenv("HOME", home.c_str(), 1);
    const double measure = Bench::median(nothing.seconds);
    const std::array<bool, 3> met{
        Bench::isMet({"helper", Bench::median(whole.seconds) / measure, "times true", 2.0}),
        Bench::isMet(
            {"helper without a file to write", Bench::median(withoutFile.seconds) / measure, "times true", 1.3}),
        Bench::isMet({"resident memory of the helper", residentBytes(helper, document) / 1e6, "MB", memoryLimit / 1e6}),
    };
    return std::ranges::all_of(met, std::identity()) ? 0 : 1;
}
