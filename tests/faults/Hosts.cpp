#include "tests/faults/Hosts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "adserver/AdServer.h"
#include "tests/App.h"
#include "tests/LibraryFolder.h"
#include "tests/faults/CountedTasks.h"
#include "tests/faults/Ear.h"

namespace VexmoraSDK {
namespace {

Catalog catalog() {
    std::string error;
    auto catalog = Catalog::load(Catalog::defaultFile(), error);
    if (!catalog) throw std::runtime_error(error);
    for (const auto& bomb : std::filesystem::directory_iterator(VEXMORA_BOMBS)) {
        catalog->placements[bomb.path().stem()] = {
            {Creative::native, "/landing/bomb", bomb.path(), "A bomb", "Boom.", "Acme"}};
    }
    return *std::move(catalog);
}

/// A block of the main queue may start tasks, and a task may add a block.
void waitUntilNothingIsUnderWay() {
    do {
        ASSERT_TRUE(App::waitFor(CountedTasks::allAreThrough, std::chrono::seconds(100)));
        App::runQueuedBlocks();
    } while (!CountedTasks::allAreThrough());
    EXPECT_EQ(CountedTasks::completedTwice(), 0);
}

}  // namespace

std::string requestUrlFormat() {
    constexpr auto kVariable = "VEXMORA_TEST_TEMPLATE";
    if (const char* known = std::getenv(kVariable)) return known;
    static const AdServer server(catalog());
    setenv(kVariable, server.requestUrlFormat().c_str(), 1);
    return server.requestUrlFormat();
}

std::vector<std::string> show(const std::vector<Host>& hosts) {
    [[maybe_unused]] static const bool started = (App::startForGood(), true);
    static const LibraryFolder folder(requestUrlFormat());

    std::vector<std::shared_ptr<Ear>> ears;
    std::vector<std::shared_ptr<VexmoraView>> views;
    for (const Host& host : hosts) {
        ears.push_back(std::make_shared<Ear>());
        views.push_back(
            VexmoraViewFactory::createView(host.container, host.kind, Ear::delegate(ears.back())));
    }
    waitUntilNothingIsUnderWay();

    std::vector<std::string> heard;
    for (const auto& ear : ears)
        heard.push_back(ear->heard());
    return heard;
}

void showAlone(const Host& host, const std::string& expected, long mostMemory) {
    const std::string heard = show({host}).front();
    std::string line;
    for (std::ifstream status("/proc/self/status"); !line.starts_with("VmHWM:");)
        std::getline(status, line);
    const long memory = std::stol(line.substr(sizeof "VmHWM:")) / 1024;
    std::cerr << "heard " << heard << ", had " << memory << " MiB\n";
    std::exit(heard == expected && memory <= mostMemory ? 0 : 1);
}

}  // namespace VexmoraSDK
