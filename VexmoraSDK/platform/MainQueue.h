// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// The serial queue of the main thread, which runs the user interface.
class VEXMORA_EXPORT MainQueue {
 public:
    /// The queue; null until a toolkit with a user interface has been started. Any thread.
    static MainQueue* main();

    /// Runs `block` later, once, on the main thread, in the order of the calls, in nested event
    /// loops too. Blocks never run after the toolkit has ended. Any thread.
    void async(std::function<void()> block);

    /// Makes the toolkit initialise its statics that blocks use. Their exit handlers are thus
    /// registered before the handler that calls `end`, and run after it. Called once, with or
    /// without an application.
    void prepareForEnd();
    /// Called when the process exits, once, on any thread. No block starts afterwards. A running
    /// one is waited for, for at most a second because it may be waiting itself.
    void end();

    /// Whether the caller runs on the main thread.
    bool isMainThread() const;
    /// Whether the caller runs inside a block of this queue.
    bool isRunningBlock() const;

    /// Releases a reference on the main thread, so that its object is destroyed there: at once if
    /// the caller is on the main thread or there is no queue, otherwise in a block.
    static void release(std::shared_ptr<void> reference) {
        if (auto* queue = main(); queue && !queue->isMainThread()) {
            queue->async([reference = std::move(reference)] {});
        }
    }
};

/// Makes a shared object that is destroyed on the main thread, whichever thread drops the last
/// reference.
template <class T, class... Arguments>
std::shared_ptr<T> makeSharedOnMain(Arguments&&... arguments) {
    return std::shared_ptr<T>(new T(std::forward<Arguments>(arguments)...), [](T* object) noexcept {
        MainQueue::release(std::shared_ptr<T>(object));
    });
}

}  // namespace VexmoraSDK::platform
