// SPDX-License-Identifier: MIT
#include "tests/faults/Hosts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "adserver/AdServer.h"
#include "tests/App.h"
#include "tests/EventRecorder.h"
#include "tests/LibraryFolder.h"
#include "tests/faults/Bombs.h"

namespace VexmoraSDK {

std::string requestUrlFormat() {
    constexpr auto kVariable = "VEXMORA_TEST_TEMPLATE";
    if (const char* inherited = std::getenv(kVariable)) return inherited;
    static const AdServer server(catalogWithBombs());
    setenv(kVariable, server.requestUrlFormat().c_str(), 1);
    return server.requestUrlFormat();
}

std::vector<std::string> show(const std::vector<Promise>& promises) {
    [[maybe_unused]] static const bool started = (App::startForGood(), true);
    static const LibraryFolder folder(requestUrlFormat());

    struct Slot {
        std::shared_ptr<EventRecorder> recorder = std::make_shared<EventRecorder>();
        std::shared_ptr<VexmoraView> view;
    };
    std::vector<Slot> slots(promises.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        slots[i].view = VexmoraViewFactory::createView(promises[i].container, promises[i].kind,
                                                       slots[i].recorder->delegate());
    }
    const auto hasEnded = [](const Slot& slot) {
        return slot.recorder->events() != "nothing" || hasItsAdAlone(*slot.view);
    };
    EXPECT_TRUE(App::waitFor([&] { return std::ranges::all_of(slots, hasEnded); },
                             std::chrono::seconds(100)));
    App::runQueuedBlocks();

    std::vector<std::string> events;
    for (const Slot& slot : slots)
        events.push_back(slot.recorder->events());
    return events;
}

void showAlone(const Promise& promise, long maxMemory) {
    const std::string events = show({promise}).front();
    std::string line;
    for (std::ifstream status("/proc/self/status"); !line.starts_with("VmHWM:");)
        std::getline(status, line);
    const long memory = std::stol(line.substr(sizeof "VmHWM:")) / 1024;
    std::cerr << "events: " << events << "; peak of memory: " << memory << " MiB\n";
    std::exit(events == promise.events && memory <= maxMemory ? 0 : 1);
}

}  // namespace VexmoraSDK

// The mock ad server starts before the tests, so that the programs of the death tests find it.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    VexmoraSDK::requestUrlFormat();
    return RUN_ALL_TESTS();
}
