// SPDX-License-Identifier: MIT
// Pictures of the format whose decoder VEXMORA_DECODER names.
#include <algorithm>

#include "VexmoraSDK/platform/images/Codecs.h"
#include "tests/fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    const auto image = platform::VEXMORA_DECODER({reinterpret_cast<const std::byte*>(bytes), size});
    if (!image) return 0;
    const auto width = static_cast<std::uint64_t>(image->width());
    const auto height = static_cast<std::uint64_t>(image->height());
    check(platform::isAcceptedSize(width, height), "a size out of bounds");
    const std::span pixels(image->pixels(), width * height);
    check(std::ranges::all_of(pixels,
                              [&](std::uint32_t pixel) {
                                  const std::uint32_t alpha = pixel >> 24;
                                  const std::uint32_t brightest = std::max(
                                      {pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF});
                                  return brightest <= alpha && (!image->isOpaque() || alpha == 255);
                              }),
          "a pixel that is not premultiplied, or not opaque in an opaque picture");
    return 0;
}
