// SPDX-License-Identifier: MIT
#include <sched.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "adserver/AdServer.h"
#include "tests/App.h"
#include "tests/EventRecorder.h"
#include "tests/LibraryFolder.h"
#include "tests/Program.h"
#include "tests/faults/Bombs.h"
#include "tests/faults/Outcomes.h"

// Ads on a machine of one core whose process may hold 128 MiB of data. The mock ad server is in a
// process of its own, without bounds.

namespace VexmoraSDK {
namespace {

constexpr int kAdsAtOnce = 30;

/// Under an emulator its own data count, too, which VEXMORA_EMULATOR_KIB tells.
constexpr auto kOnSmallMachine =
    R"(ulimit -d $((131072 + ${VEXMORA_EMULATOR_KIB:-0})) && exec taskset -c 0 "$0" "$1")";

std::vector<Promise> smallMachinePromises() {
    std::vector<Promise> promises;
    for (const auto& row : rowsOf("small-machine")) {
        const auto kind = row.at(1) == "banner"   ? VexmoraViewType::banner
                          : row.at(1) == "native" ? VexmoraViewType::native
                                                  : VexmoraViewType::interstitial;
        promises.push_back({row[0], kind, row.at(2)});
    }
    return promises;
}

/// Shows as many ads at once and returns how many of them have other events than promised.
int show(const Promise& promise, int times) {
    struct Ad {
        std::shared_ptr<EventRecorder> recorder = std::make_shared<EventRecorder>();
        std::shared_ptr<VexmoraView> view;
    };
    std::vector<Ad> ads(static_cast<std::size_t>(times));
    for (Ad& ad : ads) {
        ad.view = VexmoraViewFactory::createView(promise.container, promise.kind,
                                                 ad.recorder->delegate());
    }
    App::waitFor([&] {
        return std::ranges::all_of(ads,
                                   [](const Ad& ad) { return ad.recorder->events() != "nothing"; });
    });
    App::runQueuedBlocks();
    int wrong = 0;
    for (const Ad& ad : ads) {
        if (ad.recorder->events() == promise.events) continue;
        ++wrong;
        std::printf("%s: expected %s, recorded %s\n", promise.container.c_str(),
                    promise.events.c_str(), ad.recorder->events().c_str());
    }
    return wrong;
}

int showAll(const std::string& requestUrlFormat) {
    const LibraryFolder folder(requestUrlFormat);
    const App app;
    cpu_set_t own;
    const int cores = sched_getaffinity(0, sizeof own, &own) == 0 ? CPU_COUNT(&own) : 0;
    int wrong = cores == 1 ? 0 : 1;
    const auto promises = smallMachinePromises();
    if (promises.empty()) ++wrong;
    for (const Promise& promise : promises) {
        // How much is left to the largest pictures would depend on the emulator.
        if (promise.container.starts_with("bomb-") && std::getenv("VEXMORA_EMULATOR_KIB")) {
            std::printf("not tried under an emulator: %s\n", promise.container.c_str());
            continue;
        }
        wrong += show(promise, promise.container == "anywhere" ? kAdsAtOnce : 1);
    }
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmData:") || line.starts_with("VmHWM:")) std::puts(line.c_str());
    }
    std::printf("%zu lines, %d core, %d wrong\n", promises.size(), cores, wrong);
    return wrong > 0;
}

}  // namespace
}  // namespace VexmoraSDK

int main(int argc, char** argv) {
    using namespace VexmoraSDK;
    if (argc == 2) return showAll(argv[1]);
    const AdServer server(catalogWithBombs());
    Program host({"/bin/sh", "-c", kOnSmallMachine, argv[0], server.requestUrlFormat()});
    const std::string output = host.readAll();
    const int status = host.wait();
    std::printf("%sstatus %d\n", output.c_str(), status);
    return status;
}
