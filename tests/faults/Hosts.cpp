#include "tests/faults/Hosts.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <mutex>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/LibraryFolder.h"
#include "tests/faults/CountedTasks.h"
#include "tests/faults/Site.h"
#include "tests/qt/AppTest.h"

namespace VexmoraSDK {
namespace {

/// What a host has heard. Errors of requests come on other threads.
class Ear : public std::enable_shared_from_this<Ear> {
 public:
    std::shared_ptr<VexmoraDelegate> delegate() {
        auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [self = shared_from_this()](VexmoraView&) { self->hear("drawn"); };
        delegate->didHaveError = [self = shared_from_this()](VexmoraView&,
                                                             const VexmoraError& error) {
            self->hear(nameOf(errorCodeWithRawValue(error.code())));
        };
        return delegate;
    }

    std::string heard() const {
        const std::lock_guard lock(mutex_);
        return heard_.empty() ? "nothing" : heard_;
    }

 private:
    void hear(const std::string& what) {
        const std::lock_guard lock(mutex_);
        heard_ += (heard_.empty() ? "" : ", ") + what;
    }

    static std::string nameOf(std::optional<VexmoraErrorCodes> code) {
        if (code == VexmoraErrorCodes::UnknownError) return "UnknownError";
        if (code == VexmoraErrorCodes::ParsingError) return "ParsingError";
        if (code == VexmoraErrorCodes::RequestError) return "RequestError";
        if (code == VexmoraErrorCodes::NoFill) return "NoFill";
        if (code == VexmoraErrorCodes::ImageRequestError) return "ImageRequestError";
        return "an error that there is not";
    }

    mutable std::mutex mutex_;
    std::string heard_;
};

std::shared_ptr<VexmoraView> createView(const Host& host,
                                        std::shared_ptr<VexmoraDelegate> delegate) {
    switch (host.kind) {
        case Kind::banner:
            return VexmoraViewFactory::createView(host.container, "320x60", std::move(delegate));
        case Kind::native:
            return VexmoraViewFactory::createView(host.container, VexmoraViewType::native,
                                                  std::move(delegate));
        case Kind::interstitial: break;
    }
    return VexmoraViewFactory::createView(host.container, "300x250", std::move(delegate));
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

std::vector<std::string> show(const std::vector<Host>& hosts) {
    [[maybe_unused]] static const App& app = *new App;
    static const LibraryFolder folder(Site::requestUrlFormat());

    std::vector<std::shared_ptr<Ear>> ears;
    std::vector<std::shared_ptr<VexmoraView>> views;
    for (const Host& host : hosts) {
        ears.push_back(std::make_shared<Ear>());
        views.push_back(createView(host, ears.back()->delegate()));
    }
    waitUntilNothingIsUnderWay();

    std::vector<std::string> heard(ears.size());
    std::ranges::transform(ears, heard.begin(), [](const auto& ear) { return ear->heard(); });
    return heard;
}

void showAndTell(const Host& host) {
    const std::string heard = show({host}).front();
    std::string line;
    for (std::ifstream status("/proc/self/status"); !line.starts_with("VmHWM:");)
        std::getline(status, line);
    const long kilobytes = std::stol(line.substr(sizeof "VmHWM:"));
    std::cerr << "host: " << heard << ": " << kilobytes / 1024 << std::endl;
    std::exit(0);
}

}  // namespace VexmoraSDK
