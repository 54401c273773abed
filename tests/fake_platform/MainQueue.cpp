// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/MainQueue.h"

#include <deque>
#include <mutex>
#include <optional>
#include <thread>

#include "tests/fake_platform/FakeMainQueue.h"

namespace VexmoraSDK::platform {
namespace {

using Block = std::function<void()>;

struct State {
    std::mutex mutex;
    std::optional<std::thread::id> mainThread;
    std::deque<Block> blocks;
};

State& state() {
    static State& state = *new State;
    return state;
}

thread_local bool runningBlock = false;

// Blocks are destroyed outside the lock, because what they hold may use the queue.
void restart(std::optional<std::thread::id> mainThread) {
    std::deque<Block> dropped;
    const std::lock_guard lock(state().mutex);
    state().mainThread = mainThread;
    dropped.swap(state().blocks);
}

std::optional<Block> nextBlock() {
    const std::lock_guard lock(state().mutex);
    if (state().blocks.empty()) return std::nullopt;
    auto block = std::move(state().blocks.front());
    state().blocks.pop_front();
    return block;
}

}  // namespace

MainQueue* MainQueue::main() {
    static MainQueue queue;
    const std::lock_guard lock(state().mutex);
    return state().mainThread ? &queue : nullptr;
}

void MainQueue::async(std::function<void()> block) {
    const std::lock_guard lock(state().mutex);
    if (state().mainThread) state().blocks.push_back(std::move(block));
}

void MainQueue::prepareForEnd() {}

void MainQueue::end() {}

bool MainQueue::isMainThread() const {
    const std::lock_guard lock(state().mutex);
    return state().mainThread == std::this_thread::get_id();
}

bool MainQueue::isRunningBlock() const {
    return runningBlock;
}

void FakeMainQueue::start() {
    restart(std::this_thread::get_id());
}

void FakeMainQueue::stop() {
    restart(std::nullopt);
}

void FakeMainQueue::drain() noexcept {
    while (const auto block = nextBlock()) {
        runningBlock = true;
        (*block)();
        runningBlock = false;
    }
}

}  // namespace VexmoraSDK::platform
