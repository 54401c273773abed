#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "adserver/AdServer.h"
#include "tests/LibraryFolder.h"
#include "tests/leaving/Host.h"

namespace VexmoraSDK {
namespace {

constexpr int kExitCode = 7;
constexpr unsigned kMostSeconds = 30;

/// Keeps ads of all kinds at every stage, good ones and others, and counts the outcomes.
class Ads {
 public:
    /// Each is called with every outcome from the given one on, where it is heard: on the main
    /// thread, or, for requests that fail, on a delivery thread.
    std::function<void()> onDrawn = [] {};
    std::function<void()> onRequestError = [] {};

    explicit Ads(int first) : first_(first) {}

    void start() {
        for (int i = 0; i < 32; ++i)
            show();
    }

 private:
    void show() {
        // The last two are never done, so that only some of the first views get them.
        static constexpr std::array kContainers = {
            "anywhere",       "fault-slow", "fault-cut-short", "fault-picture-slow", "fault-three",
            "fault-not-json", "anywhere",   "fault-stall",     "fault-picture-stall"};
        const auto number = shown_++;
        const auto choice = kContainers.size() - (number < 18 ? 0 : 2);
        static constexpr VexmoraViewType kTypes[] = {
            VexmoraViewType::banner, VexmoraViewType::native, VexmoraViewType::interstitial};
        const auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [this](VexmoraView&) { hear(onDrawn); };
        delegate->didHaveError = [this](VexmoraView&, const VexmoraError& error) {
            if (error.code() == static_cast<std::intptr_t>(VexmoraErrorCodes::RequestError))
                hear(onRequestError);
            else
                showAnother();
        };
        views_[number % std::size(views_)] = VexmoraViewFactory::createView(
            kContainers[number % choice], kTypes[number % std::size(kTypes)], delegate);
    }

    void showAnother() {
        platform::MainQueue::main()->async([this] { show(); });
    }

    void hear(const std::function<void()>& what) {
        showAnother();
        if (++heard_ >= first_) what();
    }

    const int first_;
    std::atomic<int> heard_ = 0;
    std::size_t shown_ = 0;
    std::shared_ptr<VexmoraView> views_[20];
};

/// Each of these exits is that of a process of its own, which must end well and quietly, with
/// requests in flight, models half loaded and pictures being decoded: right at the start, and after
/// some outcomes.
class LeavingTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        if (const char* folder = std::getenv(kFolderVariable)) {
            platform::Bundle::setLibraryFolder(folder);
            return;
        }
        std::string error;
        server_ = std::make_unique<AdServer>(Catalog::load(VEXMORA_CATALOG, error).value());
        folder_ = std::make_unique<LibraryFolder>(server_->requestUrlFormat());
        setenv(kFolderVariable, folder_->path().c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder_->path().c_str(), 1);
    }

    static void TearDownTestSuite() {
        folder_.reset();
        server_.reset();
        unsetenv(kFolderVariable);
    }

    static void expectToEndWell(void (*run)(int first)) {
        for (const int first : {0, 1, 5, 20, 60}) {
            const auto runIt = [&] {
                alarm(kMostSeconds);
                run(first);
            };
            EXPECT_EXIT(runIt(), testing::ExitedWithCode(kExitCode), "^$")
                << "after " << first << " outcomes";
        }
    }

 private:
    // For the processes that this one starts.
    static constexpr auto kFolderVariable = "VEXMORA_TEST_FOLDER";
    static inline std::unique_ptr<AdServer> server_;
    static inline std::unique_ptr<LibraryFolder> folder_;
};

void leave() {
    static std::atomic<bool> leaving = false;
    if (!leaving.exchange(true)) std::exit(kExitCode);
}

TEST_F(LeavingTest, EndsWellAtTheEndOfMain) {
    expectToEndWell([](int first) {
        {
            Host host;
            auto& ads = *new Ads(first);  // for the threads that outlive the host
            ads.onDrawn = ads.onRequestError = [&host] {
                platform::MainQueue::main()->async([&host] { host.quit(); });
            };
            ads.start();
            if (first > 0) host.run();
        }
        leave();
    });
}

TEST_F(LeavingTest, EndsWellInACallOfTheMainThread) {
    expectToEndWell([](int first) {
        Host host;
        Ads ads(first);
        ads.onDrawn = leave;
        ads.start();
        host.run();
    });
}

TEST_F(LeavingTest, EndsWellInACallOfADeliveryThread) {
    expectToEndWell([](int first) {
        Host host;
        Ads ads(first);
        ads.onRequestError = leave;
        ads.start();
        host.run();
    });
}

TEST_F(LeavingTest, EndsWellInAnotherThread) {
    expectToEndWell([](int first) {
        Host host;
        Ads ads(first);
        std::promise<void> now;
        std::once_flag once;
        ads.onDrawn = ads.onRequestError = [&] { std::call_once(once, [&] { now.set_value(); }); };
        std::thread leaver([&] {
            now.get_future().wait();
            leave();
        });
        ads.start();
        if (first == 0) ads.onDrawn();
        host.run();
    });
}

}  // namespace
}  // namespace VexmoraSDK
