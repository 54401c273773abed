// SPDX-License-Identifier: MIT
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"

namespace VexmoraSDK {

/// A copy of the shipped resources whose settings have the request template of the test. Make it
/// before the first ad view, which reads the settings.
class LibraryFolder {
 public:
    explicit LibraryFolder(const std::string& requestUrlFormat) {
        std::string path = std::filesystem::temp_directory_path() / "vexmora-XXXXXX";
        if (!mkdtemp(path.data())) throw std::runtime_error("cannot make a temporary folder");
        folder_ = path;
        std::filesystem::copy(platform::Bundle::shippedLibraryFolder(), folder_,
                              std::filesystem::copy_options::recursive);
        write("Info.plist", "ConfigurationPlist", "settings");
        write("settings.plist", "requestUrlFormat", requestUrlFormat);
        platform::Bundle::setLibraryFolder(folder_);
    }

    ~LibraryFolder() { std::filesystem::remove_all(folder_); }

    LibraryFolder(const LibraryFolder&) = delete;
    LibraryFolder& operator=(const LibraryFolder&) = delete;

    const std::filesystem::path& path() const { return folder_; }

 private:
    void write(const std::string& name, std::string key, std::string value) const {
        const auto list = platform::PropertyList::binary({{std::move(key), std::move(value)}});
        std::ofstream(folder_ / name) << platform::textOf(list);
    }

    std::filesystem::path folder_;
};

}  // namespace VexmoraSDK
