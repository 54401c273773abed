#pragma once

#include <filesystem>
#include <optional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/Value.h"

namespace VexmoraSDK::platform::PropertyList {

/// The dictionary at the top of a property list, XML or binary; absent when the bytes are none.
VEXMORA_EXPORT std::optional<Dictionary> dictionary(const Data& data);

/// The same from a file; absent also when the file cannot be read.
VEXMORA_EXPORT std::optional<Dictionary> dictionaryWithContentsOfFile(
    const std::filesystem::path& file);

/// The dictionary as an XML property list. Nulls, which property lists do not have, are left out.
VEXMORA_EXPORT Data xml(const Dictionary& dictionary);

}  // namespace VexmoraSDK::platform::PropertyList
