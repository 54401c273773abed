// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/MainQueue.h"

#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "VexmoraSDK/platform/cairo/FontFinder.h"
#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "VexmoraSDK/platform/foundation/BlockQueue.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK::platform {
namespace {

// Blocks that arrive after the loop has ended stay here, so that no other thread destroys objects
// of the main thread.
struct State : BlockQueue {
    /// Whether a loop exists that runs the blocks.
    bool hasLoop = false;
    /// The thread of the latest loop; absent before the first.
    std::optional<std::thread::id> mainThread;

    /// Held while `wakeUp` is called, so that it is not called after the loop's end.
    std::mutex wakeUpMutex;
    std::function<void()> wakeUp;

    bool mayRun() const { return hasLoop && !hasEnded && !blocks.empty(); }
};

State& state() {
    static NoDestructor<State> state;
    return *state;
}

void wakeUp() {
    const std::lock_guard lock(state().wakeUpMutex);
    if (state().wakeUp) state().wakeUp();
}

}  // namespace

HostLoop::HostLoop(std::function<void()> wakeUp) {
    // Here rather than in `prepareForEnd`, which the first request calls in a frame.
    prepareFontsForEnd();
    std::unique_lock lock(state().mutex);
    const FatalContext context("constructor of", "HostLoop");
    if (state().hasLoop) fatalError("there is a HostLoop already");
    {
        // Before there is a loop, whose first block calls it.
        const std::lock_guard wakeUpLock(state().wakeUpMutex);
        state().wakeUp = std::move(wakeUp);
    }
    state().hasLoop = true;
    state().mainThread = std::this_thread::get_id();
    // Blocks left by an earlier loop are destroyed on the main thread.
    auto left = std::exchange(state().blocks, {});
    lock.unlock();
    if (!left.empty()) MainQueue::main()->async([left = std::move(left)] {});
}

HostLoop::~HostLoop() {
    {
        const std::lock_guard lock(state().mutex);
        state().hasLoop = false;
    }
    std::function<void()> last;
    const std::lock_guard lock(state().wakeUpMutex);
    last.swap(state().wakeUp);
}

bool HostLoop::run(std::chrono::microseconds budget) noexcept {
    using std::chrono::steady_clock;
    const auto start = steady_clock::now();
    std::unique_lock lock(state().mutex);
    while (state().mayRun()) {
        state().runNext(lock);
        // Compared in the unit of the budget, which may be the largest that there is.
        if (std::chrono::floor<std::chrono::microseconds>(steady_clock::now() - start) >= budget)
            break;
    }
    const bool isLeft = state().mayRun();
    lock.unlock();
    if (isLeft) wakeUp();
    return isLeft;
}

MainQueue* MainQueue::main() {
    static MainQueue queue;
    const std::lock_guard lock(state().mutex);
    return state().mainThread ? &queue : nullptr;
}

void MainQueue::async(std::function<void()> block) {
    std::unique_lock lock(state().mutex);
    state().blocks.push_back(std::move(block));
    const bool isFirst = state().hasLoop && state().blocks.size() == 1;
    lock.unlock();
    if (isFirst) wakeUp();
}

void MainQueue::prepareForEnd() {}

void MainQueue::end() {
    state().end(isMainThread());
}

bool MainQueue::isMainThread() const {
    const std::lock_guard lock(state().mutex);
    return state().mainThread == std::this_thread::get_id();
}

bool MainQueue::isRunningBlock() const {
    return BlockQueue::isRunningBlock();
}

}  // namespace VexmoraSDK::platform
