// SPDX-License-Identifier: MIT
// Shows ads from the server of the given request template, which may stop and restart at any
// moment, and counts the outcomes.
#include <cstdio>
#include <cstdlib>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/App.h"
#include "tests/EventRecorder.h"
#include "tests/LibraryFolder.h"
#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

constexpr int kAdsAtOnce = 96;

struct Slot {
    explicit Slot(int number)
        : view(VexmoraViewFactory::createView("soak", static_cast<VexmoraViewType>(1 + number % 3),
                                              recorder->delegate())) {}

    /// Whether no further event can come: an ad or an error was reported, or the picture failed.
    bool hasEnded() const { return recorder->events() != "nothing" || hasItsAdAlone(*view); }

    std::shared_ptr<EventRecorder> recorder = std::make_shared<EventRecorder>();
    std::shared_ptr<VexmoraView> view;
};

int soak(const std::string& requestUrlFormat, int ads) {
    const LibraryFolder folder(requestUrlFormat);
    const App app;
    std::vector<std::shared_ptr<EventRecorder>> recorders;
    std::list<Slot> slots;
    int lost = 0;
    while (lost == 0 && (static_cast<int>(recorders.size()) < ads || !slots.empty())) {
        while (slots.size() < kAdsAtOnce && static_cast<int>(recorders.size()) < ads) {
            slots.emplace_back(static_cast<int>(recorders.size()));
            recorders.push_back(slots.back().recorder);
        }
        const auto oneHasEnded = [&] {
            return slots.remove_if([](const Slot& slot) { return slot.hasEnded(); }) > 0;
        };
        if (!App::waitFor(oneHasEnded, std::chrono::seconds(90)))
            lost = static_cast<int>(slots.size());
    }
    App::runQueuedBlocks();

    std::map<std::string, int> outcomes;
    for (const auto& recorder : recorders)
        ++outcomes[recorder->events()];
    const int drawn = outcomes["drawn"];
    const int errors = outcomes["RequestError"];
    const int silent = outcomes["nothing"] - lost;
    const int twice = static_cast<int>(recorders.size()) - drawn - errors - silent - lost;
    std::printf("| %zu | %d | %d | %d | %d | %d |\n", recorders.size(), drawn, errors, silent, lost,
                twice);
    return lost + twice > 0 || drawn < ads / 2 ? 1 : 0;
}

}  // namespace
}  // namespace VexmoraSDK

int main(int, char** argv) {
    return VexmoraSDK::soak(argv[1], std::atoi(argv[2]));
}
