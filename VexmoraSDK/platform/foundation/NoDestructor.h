// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace VexmoraSDK::platform {

/// A `T` that is never destroyed, for statics inside functions: delivery threads and late callers
/// may still use it while the process exits.
template <class T>
class NoDestructor {
 public:
    template <class... Arguments>
    explicit NoDestructor(Arguments&&... arguments) {
        ::new (static_cast<void*>(storage_)) T(std::forward<Arguments>(arguments)...);
    }
    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;

    T& operator*() { return *std::launder(reinterpret_cast<T*>(storage_)); }
    const T& operator*() const { return *std::launder(reinterpret_cast<const T*>(storage_)); }
    T* operator->() { return &**this; }
    const T* operator->() const { return &**this; }

 private:
    alignas(T) std::byte storage_[sizeof(T)];
};

}  // namespace VexmoraSDK::platform
