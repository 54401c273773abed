// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK::platform::PropertyList {

/// How deep arrays and dictionaries may be nested, the outermost included.
inline constexpr int kMaxLevels = 512;

/// The dictionary at the top of a property list, XML (a leading UTF-8 byte order mark accepted) or
/// binary; absent when the bytes are no such list, when it has more than 10,000 levels, and when a
/// binary list has a text with a zero in it. What is nested deeper than `kMaxLevels` is empty. The
/// bytes must come from the library or its host: a malicious binary list may take any time.
VEXMORA_EXPORT std::optional<Dictionary> dictionary(const Data& data);

/// The same from a file; absent also when the file cannot be read.
VEXMORA_EXPORT std::optional<Dictionary> dictionaryWithContentsOfFile(
    const std::filesystem::path& file);

/// The dictionary as a binary property list. Nulls, which property lists do not have, are left out;
/// texts are UTF-8 without a zero, and dates are within 68 years of 2001.
VEXMORA_EXPORT Data binary(const Dictionary& dictionary);

}  // namespace VexmoraSDK::platform::PropertyList
