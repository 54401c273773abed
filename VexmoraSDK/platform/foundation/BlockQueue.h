// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace VexmoraSDK::platform {

/// The common part of the backends' `MainQueue`s: the waiting blocks, guarded by the mutex, and the
/// number that the main thread is running.
class BlockQueue {
 public:
    std::mutex mutex;
    std::deque<std::function<void()>> blocks;
    /// Whether the process exits and no block may start.
    bool hasEnded = false;

    /// Runs the first block. `lock` holds the mutex, but not while the block runs. Main thread.
    void runNext(std::unique_lock<std::mutex>& lock) {
        auto block = std::move(blocks.front());
        blocks.pop_front();
        ++running_;
        lock.unlock();
        const bool isNested = std::exchange(runningBlock_, true);
        block();
        block = nullptr;
        runningBlock_ = isNested;
        lock.lock();
        --running_;
        ranBlock_.notify_all();
    }

    /// Whether the calling thread is running a block.
    static bool isRunningBlock() { return runningBlock_; }

    /// Implements `MainQueue::end`.
    void end(bool onMainThread) {
        std::unique_lock lock(mutex);
        hasEnded = true;
        if (onMainThread) return;
        ranBlock_.wait_for(lock, std::chrono::seconds(1), [this] { return running_ == 0; });
    }

 private:
    /// The number of nested running blocks.
    int running_ = 0;
    std::condition_variable ranBlock_;
    static inline thread_local bool runningBlock_ = false;
};

}  // namespace VexmoraSDK::platform
