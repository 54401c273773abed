// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace VexmoraSDK {

/// Notices when a catalogue, or a picture in the folder beside it, is written, replaced or removed.
class CatalogWatch {
 public:
    /// `file` must be absolute.
    explicit CatalogWatch(std::filesystem::path file);
    ~CatalogWatch();
    CatalogWatch(const CatalogWatch&) = delete;
    CatalogWatch& operator=(const CatalogWatch&) = delete;

    /// A file descriptor that is readable when something may have changed; -1 if files cannot be
    /// watched.
    int descriptor() const { return descriptor_; }
    /// Whether something has changed since the last call. It does not block.
    bool changed();

 private:
    void watchFolders();

    const std::filesystem::path file_;
    const std::filesystem::path pictures_;
    const int descriptor_;
    int picturesWatch_ = -1;
};

}  // namespace VexmoraSDK
