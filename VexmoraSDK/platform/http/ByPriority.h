// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK::platform {

/// A value for each priority of tasks.
template <class T>
struct ByPriority {
    T& operator[](TaskPriority priority) { return values[static_cast<std::size_t>(priority)]; }
    const T& operator[](TaskPriority priority) const {
        return values[static_cast<std::size_t>(priority)];
    }

    std::array<T, 2> values{};
};

}  // namespace VexmoraSDK::platform
