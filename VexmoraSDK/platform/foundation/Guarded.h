// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace VexmoraSDK::platform {

/// A shared pointer that one thread sets while others read it.
template <class T>
class Guarded {
 public:
    std::shared_ptr<T> get() const {
        const std::lock_guard lock(mutex_);
        return pointer_;
    }

    /// The former pointer is released after the lock.
    void set(std::shared_ptr<T> pointer) {
        const std::lock_guard lock(mutex_);
        pointer_.swap(pointer);
    }

 private:
    mutable std::mutex mutex_;
    std::shared_ptr<T> pointer_;
};

}  // namespace VexmoraSDK::platform
