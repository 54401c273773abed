// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/ImageCache.h"

#include <algorithm>
#include <utility>

namespace VexmoraSDK::platform {

std::shared_ptr<const Image> ImageCache::find(const SharedData& data) {
    const std::lock_guard lock(mutex_);
    const auto found = images_.find(data);
    auto image = found == images_.end() ? nullptr : found->second.lock();
    if (!image) {
        // The memory of the last picture is still in the caches, and is taken for the next one.
        dropUnneeded();
        return nullptr;
    }
    const auto kept = std::ranges::find(latest_, image, &Kept::image);
    if (kept == latest_.end()) {
        latest_.push_front({data, image});
        dropUnneeded();
    } else {
        latest_.splice(latest_.begin(), latest_, kept);
    }
    return image;
}

std::shared_ptr<const Image> ImageCache::keep(const SharedData& data,
                                              std::shared_ptr<const Image> image) {
    const std::lock_guard lock(mutex_);
    auto& known = images_[data];
    if (auto earlier = known.lock()) return earlier;
    known = image;
    latest_.push_front({data, image});
    dropUnneeded();
    return image;
}

void ImageCache::dropUnneeded() {
    std::erase_if(
        images_, [](const auto& entry) { return entry.first.expired() || entry.second.expired(); });
    std::size_t bytes = 0;
    std::erase_if(latest_, [&](const Kept& kept) {
        const auto height = static_cast<std::size_t>(kept.image->height());
        const auto size = static_cast<std::size_t>(kept.image->bytesPerRow()) * height;
        if (kept.data.expired() || bytes + size > kMaxKeptBytes) return true;
        bytes += size;
        return false;
    });
}

}  // namespace VexmoraSDK::platform
