// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// The serial queue of the thread that runs the user interface.
class VEXMORA_EXPORT MainQueue {
 public:
    /// The queue, or absent as long as no toolkit with a user interface was ever started. Any
    /// thread.
    static MainQueue* main();

    /// Runs `block` later, once, on the main thread, in the order of the calls, in nested event
    /// loops too. Once the toolkit has ended blocks never run. Any thread.
    void async(std::function<void()> block);

    /// Has the toolkit build for good what blocks will use, so that its exit handlers are
    /// registered before the one that calls `end`, and run after it. Once, with or without an
    /// application.
    void prepareForEnd();
    /// The process exits, in whatever thread: from now on no block begins, and one that the main
    /// thread is in the midst of is waited for, though no longer than a second, for it may be
    /// waiting itself. Any thread, once.
    void end();

    /// Whether the caller runs on the main thread.
    bool isMainThread() const;
    /// Whether the caller runs inside a block of this queue.
    bool isRunningBlock() const;

    /// Gives up a reference on the main thread, so that what is destroyed with it is destroyed
    /// there: at once when the caller runs on that thread or there is no queue, else in a block.
    static void release(std::shared_ptr<void> reference) {
        if (auto* queue = main(); queue && !queue->isMainThread()) {
            queue->async([reference = std::move(reference)] {});
        }
    }
};

/// A shared object that is destroyed on the main thread, wherever its last reference goes.
template <class T, class... Arguments>
std::shared_ptr<T> makeSharedOnMain(Arguments&&... arguments) {
    return std::shared_ptr<T>(new T(std::forward<Arguments>(arguments)...), [](T* object) noexcept {
        MainQueue::release(std::shared_ptr<T>(object));
    });
}

}  // namespace VexmoraSDK::platform
