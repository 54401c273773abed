#pragma once

#include <chrono>
#include <memory>

#include "VexmoraSDK/platform/MainQueue.h"

namespace VexmoraSDK {

/// A started application of the toolkit's, or one on the fake device; which, is decided when
/// linking. Its thread is the main thread.
class App {
 public:
    App();
    ~App();

    /// Starts one that is never taken down.
    static void startForGood() { forGood_ = new App; }

    /// Runs what comes up on the main thread until `condition` holds; false when that takes too
    /// long.
    template <class Condition>
    static bool waitFor(Condition condition,
                        std::chrono::seconds longest = std::chrono::seconds(60)) {
        const auto deadline = std::chrono::steady_clock::now() + longest;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            runForAMoment();
        }
        return true;
    }

    /// Runs the blocks that are in the main queue now.
    static void runQueuedBlocks() {
        const auto ran = std::make_shared<bool>(false);
        platform::MainQueue::main()->async([ran] { *ran = true; });
        waitFor([&] { return *ran; });
    }

 private:
    static void runForAMoment();
    static inline App* forGood_ = nullptr;

    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
