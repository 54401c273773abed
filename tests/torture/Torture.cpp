// SPDX-License-Identifier: MIT
#include "tests/torture/Torture.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <iostream>
#include <map>

namespace VexmoraSDK {
namespace {

constexpr int kDeadline = 60'000;  // milliseconds without a sign of life

struct Run {
    FailingCalls::Record record;
    char outcome[128];
};

[[noreturn]] void runHere(const Torture::Scenario& scenario, long nth, Run& run) {
    constexpr rlimit kNoCore{0, 0};
    setrlimit(RLIMIT_CORE, &kNoCore);
    std::string outcome = "an exception left the library";
    try {
        outcome = scenario([&] { FailingCalls::begin(nth, run.record); });
    } catch (...) {
    }
    std::strncpy(run.outcome, outcome.c_str(), sizeof run.outcome - 1);
    // `exit` runs the handlers, of which one is the library's and one looks for leaks.
    std::exit(0);
}

/// What the process writes until it ends; it is killed after a minute without a word.
std::string written(int from, pid_t process) {
    std::string text;
    pollfd waiting{from, POLLIN, 0};
    while (poll(&waiting, 1, kDeadline) == 1) {
        char bytes[4096];
        const ssize_t count = read(from, bytes, sizeof bytes);
        if (count <= 0) return text;
        text.append(bytes, static_cast<std::size_t>(count));
    }
    kill(process, SIGKILL);
    return text;
}

/// Runs the scenario with the `nth` call failing, and tells how it ended.
std::string endingOf(const Torture::Scenario& scenario, long nth, Run& run) {
    run.record.calls = 0;
    run.record.failed = nullptr;
    run.outcome[0] = '\0';
    int errors[2];
    if (pipe(errors) != 0) return "no pipe";
    const pid_t process = fork();
    if (process == 0) {
        dup2(errors[1], STDERR_FILENO);
        close(errors[0]);
        close(errors[1]);
        runHere(scenario, nth, run);
    }
    close(errors[1]);
    const std::string report = written(errors[0], process);
    close(errors[0]);
    int status = 0;
    waitpid(process, &status, 0);

    if (status == 0 && report.empty()) return run.outcome;
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT) {
        return report.substr(0, report.find('\n'));
    }
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) return "does not end\n" + report;
    return "status " + std::to_string(status) + '\n' + report;
}

bool matches(const std::string& text, const std::string& pattern) {
    return testing::Matcher<const std::string&>(testing::MatchesRegex(pattern)).Matches(text);
}

}  // namespace

void Torture::run(const std::string& name, const Scenario& scenario,
                  const std::vector<Allowed>& allowed) {
    void* memory =
        mmap(nullptr, sizeof(Run), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto& run = *new (memory) Run;
    const auto isAllowed = [&](const std::string& ending, const std::string& call) {
        return std::ranges::any_of(allowed, [&](const Allowed& each) {
            return matches(ending, each.ending) && matches(call, each.calls);
        });
    };

    const std::string whole = endingOf(scenario, 0, run);
    EXPECT_TRUE(isAllowed(whole, "")) << "nothing fails: " << whole;
    const long calls = run.record.calls;
    EXPECT_GT(calls, 0);
    long failed = 0;
    std::map<std::string, int> endings;
    for (long nth = 1; nth <= calls; ++nth) {
        const std::string ending = endingOf(scenario, nth, run);
        const char* call = run.record.failed;
        if (!call) continue;  // Threads do not always make as many calls.
        ++failed;
        ++endings[ending];
        EXPECT_TRUE(isAllowed(ending, call)) << "call " << nth << ", " << call << ": " << ending;
    }
    munmap(memory, sizeof(Run));

    std::cout << "| " << name << " | " << failed << " | ";
    const char* comma = "";
    for (const auto& [ending, count] : endings) {
        std::cout << comma << count << " × " << ending;
        comma = ", ";
    }
    std::cout << " |\n";
}

}  // namespace VexmoraSDK
