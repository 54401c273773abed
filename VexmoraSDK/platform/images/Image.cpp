// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/Image.h"

#include <bit>
#include <string_view>
#include <utility>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/images/Codecs.h"
#include "VexmoraSDK/platform/images/ImageCache.h"

namespace VexmoraSDK::platform {
namespace {

static_assert(std::endian::native == std::endian::little,
              "The codecs write blue, green, red and alpha in the order of their bytes.");

/// Only the formats of the web: each decoder is attack surface for a server.
struct Format {
    std::string_view beginning;
    std::shared_ptr<const Image> (*decode)(EncodedImage);
};
constexpr Format kFormats[] = {
    {"\x89PNG", decodePng}, {"\xFF\xD8", decodeJpeg}, {"RIFF", decodeWebP}, {"GIF8", decodeGif}};

}  // namespace

std::shared_ptr<const Image> Image::fromData(const Data& data) {
    for (const auto& [beginning, decode] : kFormats) {
        if (textOf(data).starts_with(beginning)) return decode(data);
    }
    return nullptr;
}

std::shared_ptr<const Image> Image::fromData(const SharedData& data) {
    static NoDestructor<ImageCache> cache;
    if (auto image = cache->find(data)) return image;
    auto image = fromData(*data);
    return image ? cache->keep(data, std::move(image)) : nullptr;
}

Image::Image(int width, int height, Pixels pixels, bool isOpaque)
    : width_(width), height_(height), pixels_(std::move(pixels)), isOpaque_(isOpaque) {}

}  // namespace VexmoraSDK::platform
