// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::platform {

enum class GunzipResult { whole, truncated, damaged, tooLarge };

/// Decompresses a gzip file of one or more members into `decoded`, which takes at most `maxBytes`.
/// Unless the file is whole, `decoded` holds a part of it. Throws `std::bad_alloc`. Any thread.
GunzipResult gunzip(const Data& file, std::size_t maxBytes, Data& decoded);

}  // namespace VexmoraSDK::platform
