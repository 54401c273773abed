// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

/// Caches the pictures of shared bytes, such as stored HTTP responses, so that they are decoded
/// once. An unused picture is dropped unless it is among the latest `kMaxKeptBytes` of pixels, or
/// when its bytes are gone. Any thread.
class ImageCache {
 public:
    static constexpr std::size_t kMaxKeptBytes = 8 * 1024 * 1024;

    /// The cached picture of `data`, or null.
    std::shared_ptr<const Image> find(const SharedData& data);

    /// Returns the picture to use: the one of a thread that has decoded the same bytes meanwhile,
    /// or else this one.
    std::shared_ptr<const Image> keep(const SharedData& data, std::shared_ptr<const Image> image);

 private:
    using Key = std::weak_ptr<const Data>;

    void dropUnneeded();

    std::mutex mutex_;
    std::map<Key, std::weak_ptr<const Image>, std::owner_less<Key>> images_;
    struct Kept {
        Key data;
        std::shared_ptr<const Image> image;
    };
    std::list<Kept> latest_;  // the latest comes first
};

}  // namespace VexmoraSDK::platform
