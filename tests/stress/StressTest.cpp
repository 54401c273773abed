#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "tests/LibraryFolder.h"
#include "tests/fake_platform/FakeApplication.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/stress/Network.h"

namespace VexmoraSDK {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 2;
constexpr int kTurnsPerRound = 60;
constexpr auto kDeadline = std::chrono::seconds(60);

struct Counts {
    std::atomic<int> drawn = 0;
    std::atomic<int> errors = 0;
    std::atomic<int> taps = 0;
    std::atomic<int> delegates = 0;  // that are alive, as the views that hold them
};

/// One of many threads, each a host, a user and, where the network is a fake one, a server.
class Worker {
 public:
    Worker(int number, Network& network, Counts& counts)
        : number_(number), network_(network), counts_(counts) {}

    void run() {
        for (int i = 0; i < kRounds * kTurnsPerRound; ++i)
            show(i);
    }

 private:
    void show(int turn) {
        constexpr std::array kTypes = {VexmoraAdType::banner, VexmoraAdType::native,
                                       VexmoraAdType::mediumRectangle};
        const auto type = kTypes[static_cast<std::size_t>(turn) % kTypes.size()];
        const auto container = turn % 10 == 8   ? "fault-cut-short"
                               : turn % 10 == 9 ? "fault-empty-array"
                                                : name(turn);
        std::promise<void> heard;
        auto hears = heard.get_future();
        std::shared_ptr<VexmoraView> view;
        inMain([&, delegate = delegate(std::move(heard))] {
            view = VexmoraViewFactory::createView(container, type, delegate);
        });
        const bool leavesEarly = turn % 4 == 3;
        if (leavesEarly) view.reset();
        network_.serve(container, static_cast<int>(type));
        if (leavesEarly) return;

        wait(hears);
        // A tap anywhere on an interstitial but on its button stops the process.
        if (type != VexmoraAdType::mediumRectangle) inMain([&] { view->tap({5, 5}); });
        view.reset();
    }

    std::string name(int turn) const {
        return "c" + std::to_string(number_) + "-" + std::to_string(turn);
    }

    /// Keeps `heard` for the first that is heard.
    std::shared_ptr<VexmoraDelegate> delegate(std::promise<void> heard) {
        ++counts_.delegates;
        std::shared_ptr<VexmoraDelegate> delegate(new VexmoraDelegate,
                                                  [&counts = counts_](VexmoraDelegate* gone) {
                                                      delete gone;
                                                      --counts.delegates;
                                                  });
        const auto hear = [once = std::make_shared<std::once_flag>(),
                           promise = std::make_shared<std::promise<void>>(std::move(heard))] {
            std::call_once(*once, [&] { promise->set_value(); });
        };
        delegate->didReceiveAd = [&counts = counts_, hear](VexmoraView&) {
            ++counts.drawn;
            hear();
        };
        delegate->didHaveError = [&counts = counts_, hear](VexmoraView&, const VexmoraError&) {
            ++counts.errors;
            hear();
        };
        return delegate;
    }

    static void inMain(const std::function<void()>& block) {
        std::promise<void> done;
        platform::MainQueue::main()->async([&] {
            block();
            done.set_value();
        });
        auto isDone = done.get_future();
        wait(isDone);
    }

    static void wait(const std::future<void>& future) {
        if (future.wait_for(kDeadline) == std::future_status::ready) return;
        ADD_FAILURE() << "waited too long";
        std::quick_exit(1);
    }

    const int number_;
    Network& network_;
    Counts& counts_;
};

TEST(StressTest, KeepsCountWhenManyThreadsShowAnswerTapAndLetGo) {
    Network network;
    const LibraryFolder folder(network.requestUrlFormat());
    platform::FakeMainQueue::start();
    Counts counts;
    platform::FakeApplication::setOpener([&](const platform::Url&) { ++counts.taps; });

    std::atomic<int> working = kThreads;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            Worker(i, network, counts).run();
            --working;
        });
    }
    // What was let go early may still be under way.
    while (working > 0 || counts.delegates > 0) {
        platform::FakeMainQueue::drain();
        std::this_thread::yield();
    }
    for (auto& thread : threads)
        thread.join();

    // Of the 60 turns of a round 6 have a request that fails and 6 an answer without ads, which is
    // one error for an interstitial and two for the others. 36 of the others wait for their ad, two
    // thirds of which can be tapped.
    EXPECT_EQ(counts.errors, kThreads * kRounds * (6 + 6 * 5 / 3));
    EXPECT_GE(counts.drawn, kThreads * kRounds * 36);
    EXPECT_EQ(counts.taps, kThreads * kRounds * 24);
}

}  // namespace
}  // namespace VexmoraSDK
