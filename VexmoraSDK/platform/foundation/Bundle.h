// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK::platform {

/// A folder of resources with an information dictionary, "Info.plist", in it.
class VEXMORA_EXPORT Bundle {
 public:
    explicit Bundle(std::filesystem::path folder);

    /// The library's own bundle, the same for the life of the process: the folder that
    /// `setLibraryFolder` named, else the shipped one. Any thread.
    static const Bundle& library() noexcept;
    /// Names the library's resource folder; a relative path is resolved against the working
    /// directory at once. Call it before the first ad view is made; it has no effect afterwards.
    static void setLibraryFolder(std::filesystem::path folder) noexcept;
    /// The folder that the library is shipped with: `share/VexmoraSDK` near the library or the
    /// executable; empty when there is none. Any thread.
    static std::filesystem::path shippedLibraryFolder() noexcept;

    /// Empty when there is none.
    const std::filesystem::path& folder() const { return folder_; }
    /// An entry of the information dictionary, or null. Valid while the bundle is.
    const Value* objectForInfoDictionaryKey(std::string_view key) const;
    /// The file `name`.`type` of the bundle; absent when there is none.
    std::optional<std::filesystem::path> pathForResource(std::string_view name,
                                                         std::string_view type) const;

 private:
    std::filesystem::path folder_;
    Dictionary info_;
};

}  // namespace VexmoraSDK::platform
