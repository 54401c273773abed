// SPDX-License-Identifier: MIT
#include <webp/decode.h>
#include <webp/demux.h>

#include <algorithm>

#include "VexmoraSDK/platform/images/Codecs.h"

namespace VexmoraSDK::platform {
namespace {

const std::uint8_t* bytesOf(EncodedImage data) {
    return reinterpret_cast<const std::uint8_t*>(data.data());
}

/// Decodes a picture that is not animated into `pixels`, whose rows are `canvasWidth` wide.
bool decodeInto(std::uint32_t* pixels, std::size_t canvasWidth, EncodedImage data) {
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config)) return false;
    if (WebPGetFeatures(bytesOf(data), data.size(), &config.input) != VP8_STATUS_OK) return false;
    const auto width = static_cast<std::size_t>(config.input.width);
    const auto height = static_cast<std::size_t>(config.input.height);
    config.output.colorspace = config.input.has_alpha ? MODE_bgrA : MODE_BGRA;
    config.output.is_external_memory = 1;
    auto& target = config.output.u.RGBA;
    target.rgba = reinterpret_cast<std::uint8_t*>(pixels);
    target.stride = static_cast<int>(canvasWidth * 4);
    target.size = ((height - 1) * canvasWidth + width) * 4;
    if (WebPDecode(bytesOf(data), data.size(), &config) != VP8_STATUS_OK) return false;
    constexpr int kLossy = 1;
    if (config.input.has_alpha || config.input.format == kLossy) return true;
    // A lossless picture may contain alphas even if its header denies it.
    for (std::size_t y = 0; y < height; ++y)
        for (auto& pixel : std::span(pixels + y * canvasWidth, width))
            pixel |= 0xFF000000;
    return true;
}

bool decodeFirstFrameInto(std::uint32_t* pixels, std::size_t canvasWidth, EncodedImage data) {
    const WebPData file{bytesOf(data), data.size()};
    const std::unique_ptr<WebPDemuxer, decltype(&WebPDemuxDelete)> demuxer(WebPDemux(&file),
                                                                           WebPDemuxDelete);
    WebPIterator frame{};
    if (!demuxer || !WebPDemuxGetFrame(demuxer.get(), 1, &frame)) return false;
    const auto x = static_cast<std::size_t>(frame.x_offset);
    const auto y = static_cast<std::size_t>(frame.y_offset);
    const auto* begin = reinterpret_cast<const std::byte*>(frame.fragment.bytes);
    const bool isDecoded =
        decodeInto(pixels + y * canvasWidth + x, canvasWidth, {begin, frame.fragment.size});
    WebPDemuxReleaseIterator(&frame);
    return isDecoded;
}

}  // namespace

std::shared_ptr<const Image> decodeWebP(EncodedImage data) {
    WebPBitstreamFeatures features{};
    if (WebPGetFeatures(bytesOf(data), data.size(), &features) != VP8_STATUS_OK) return nullptr;
    const auto width = static_cast<std::size_t>(features.width);
    const auto height = static_cast<std::size_t>(features.height);
    if (!isAcceptedSize(width, height)) return nullptr;
    auto pixels = makePixels(width * height);
    if (!pixels) return nullptr;
    if (features.has_animation) {
        // The frame need not cover the whole canvas.
        std::fill_n(pixels.get(), width * height, 0);
        if (!decodeFirstFrameInto(pixels.get(), width, data)) return nullptr;
    } else if (!decodeInto(pixels.get(), width, data)) {
        return nullptr;
    }
    const bool isOpaque = !features.has_alpha && !features.has_animation;
    return std::make_shared<const Image>(features.width, features.height, std::move(pixels),
                                         isOpaque);
}

}  // namespace VexmoraSDK::platform
