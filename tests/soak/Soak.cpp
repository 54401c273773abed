// SPDX-License-Identifier: MIT
#include <getopt.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <list>
#include <string>
#include <string_view>

#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "tests/App.h"
#include "tests/LibraryFolder.h"
#include "tests/Program.h"
#include "tests/soak/AdRun.h"
#include "tests/soak/ExitRun.h"

namespace VexmoraSDK {
namespace {

constexpr unsigned kFaultyPercent = 5;
constexpr std::size_t kAdsAtOnce = 96;
constexpr long kMaxHeapGrowth = 1 << 20;

[[noreturn]] void fail(const std::string& why) {
    std::fprintf(stderr, "soak: %s\n", why.c_str());
    std::exit(1);
}

/// The resources of the process.
struct Holdings {
    long heap = 0;
    long sockets = 0;
    long otherDescriptors = 0;
    long threads = 0;

    static Holdings now() {
        namespace fs = std::filesystem;
        Holdings holdings;
        const auto heap = mallinfo2();
        holdings.heap = static_cast<long>(heap.uordblks + heap.hblkhd);
        for (const auto& descriptor : fs::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const std::string leadsTo = fs::read_symlink(descriptor.path(), gone);
            ++(leadsTo.starts_with("socket:") ? holdings.sockets : holdings.otherDescriptors);
        }
        using Tasks = fs::directory_iterator;
        holdings.threads = std::distance(Tasks("/proc/self/task"), Tasks());
        return holdings;
    }

    /// Whether these are no more than `before`, apart from the connections that the library keeps.
    bool areNoMoreThan(const Holdings& before, long connections) const {
        return heap <= before.heap + kMaxHeapGrowth && sockets <= before.sockets + connections &&
               otherDescriptors <= before.otherDescriptors && threads <= before.threads;
    }
};

struct Counts {
    unsigned long shown = 0;
    unsigned long faulty = 0;
    unsigned long drawn = 0;
    unsigned long errors = 0;
    unsigned long silent = 0;
    unsigned long releasedEarly = 0;
    unsigned long wrong = 0;

    void add(const AdRun& run) {
        ++shown;
        faulty += run.isFaulty();
        ++(run.wasReleasedEarly()      ? releasedEarly
           : run.events() == "nothing" ? silent
           : run.events() == "drawn"   ? drawn
                                       : errors);
        if (run.isRight()) return;
        ++wrong;
        std::fprintf(stderr, "soak: %s\n", run.description().c_str());
    }
};

/// Shows that many ads, and returns when all their views are destroyed.
void show(std::size_t ads, Random& random, Counts& counts) {
    std::list<AdRun> runs;
    const auto removeEnded = [&] {
        for (; ads > 0 && runs.size() < kAdsAtOnce; --ads)
            runs.emplace_back(random, kFaultyPercent);
        for (AdRun& run : runs)
            run.maybeRelease(random);
        return runs.remove_if([&](const AdRun& run) {
            if (run.isOver()) counts.add(run);
            return run.isOver();
        });
    };
    while (ads > 0 || !runs.empty()) {
        if (App::waitFor([&] { return removeEnded() > 0; })) continue;
        for (const AdRun& run : runs)
            std::fprintf(stderr, "soak: %s\n", run.description().c_str());
        fail("no view was destroyed for too long");
    }
}

void soak(std::size_t ads, unsigned seed) {
    auto& limits = platform::UrlSession::shared().limits();
    limits.totalTimeout = std::chrono::seconds(5);
    limits.maxBodyBytes = std::size_t{1} << 20;

    Program server({VEXMORA_ADSERVER, "--catalog", VEXMORA_CATALOG});
    const LibraryFolder folder(server.readLabelled("Request template: "));
    server.stopReading();
    const App app;
    const auto start = std::chrono::steady_clock::now();
    std::printf("seed %u\n", seed);
    std::fflush(stdout);

    Random random(seed);
    Counts counts;
    const std::size_t warmUp =
        std::max<std::size_t>(ads / 10, std::min<std::size_t>(ads / 2, 1000));
    show(warmUp, random, counts);
    const auto before = Holdings::now();
    show(ads - warmUp, random, counts);
    Holdings after;
    const bool holdsNoMore = App::waitFor([&] {
        after = Holdings::now();
        return after.areNoMoreThan(before, static_cast<long>(limits.maxConcurrentTransfers));
    });

    const std::chrono::duration<double, std::ratio<60>> minutes =
        std::chrono::steady_clock::now() - start;
    std::printf(
        "| %lu | %lu | %.1f | %lu | %lu | %lu | %lu | %lu | %+ld KiB | %ld → %ld | %ld → %ld "
        "| %ld → %ld |\n",
        counts.shown, counts.faulty, minutes.count(), counts.drawn, counts.errors, counts.silent,
        counts.releasedEarly, counts.wrong, (after.heap - before.heap) / 1024, before.sockets,
        after.sockets, before.otherDescriptors, after.otherDescriptors, before.threads,
        after.threads);
    if (counts.wrong > 0) fail("wrong outcomes");
    if (!holdsNoMore) fail("the process holds more than before");
}

unsigned number(const char* text) {
    char* end = nullptr;
    const unsigned long value = std::strtoul(text, &end, 10);
    if (end == text || *end != '\0') fail(std::string("not a number: ") + text);
    return static_cast<unsigned>(value);
}

}  // namespace
}  // namespace VexmoraSDK

int main(int argc, char** argv) {
    using namespace VexmoraSDK;
    if (argc == 5 && std::string_view(argv[1]) == "--exit-from")
        return ExitRun::exitFrom(argv[2], static_cast<int>(number(argv[3])), argv[4]);
    unsigned ads = 2000;
    unsigned seed = 1;
    std::string place;
    const option known[] = {{"ads", required_argument, nullptr, 'a'},
                            {"seed", required_argument, nullptr, 's'},
                            {"place", required_argument, nullptr, 'p'},
                            {"exits", required_argument, nullptr, 'e'},
                            {}};
    for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
        switch (found) {
            case 'a': ads = number(optarg); break;
            case 's': seed = number(optarg); break;
            case 'p': place = optarg; break;
            case 'e': return ExitRun::runAll(static_cast<int>(number(optarg)), place) > 0;
            default: return 2;
        }
    }
    soak(ads, seed);
    return 0;
}
