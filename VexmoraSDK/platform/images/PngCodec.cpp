// SPDX-License-Identifier: MIT
#include <spng.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "VexmoraSDK/platform/images/Codecs.h"
#include "VexmoraSDK/platform/images/TimeBudget.h"

namespace VexmoraSDK::platform {
namespace {

/// Passes libspng only the chunks that the pixels need. It would inflate and keep texts, profiles
/// and suggested palettes, which do not change the picture.
class Chunks {
 public:
    explicit Chunks(EncodedImage data) : rest_(data) {}

    /// The `spng_rw_fn` that reads from the object `self`.
    static int read(spng_ctx*, void* self, void* target, std::size_t size) {
        return static_cast<Chunks*>(self)->read(static_cast<std::byte*>(target), size);
    }

 private:
    static constexpr std::size_t kSignatureSize = 8;
    static constexpr std::size_t kHeaderSize = 8;
    static constexpr std::size_t kChecksumSize = 4;

    int read(std::byte* target, std::size_t size) {
        while (size > 0) {
            if (restOfChunk_ == 0) enterChunk();
            const auto part = static_cast<std::size_t>(
                std::min<std::uint64_t>({size, restOfChunk_, rest_.size()}));
            if (part == 0) return SPNG_IO_EOF;
            target = std::copy_n(rest_.begin(), part, target);
            rest_ = rest_.subspan(part);
            restOfChunk_ -= part;
            size -= part;
        }
        return SPNG_OK;
    }

    void enterChunk() {
        while (rest_.size() >= kHeaderSize) {
            restOfChunk_ = kHeaderSize + number(rest_.first<4>()) + kChecksumSize;
            if (isNeeded(rest_.subspan<4, 4>())) return;
            rest_ = rest_.subspan(
                static_cast<std::size_t>(std::min<std::uint64_t>(restOfChunk_, rest_.size())));
        }
        restOfChunk_ = rest_.size();
    }

    static std::uint64_t number(std::span<const std::byte, 4> bigEndian) {
        std::uint64_t value = 0;
        for (const auto byte : bigEndian)
            value = value << 8 | std::to_integer<std::uint64_t>(byte);
        return value;
    }

    /// A lower-case first letter marks a chunk that a decoder may skip. Of these, only transparency
    /// is needed.
    static bool isNeeded(std::span<const std::byte, 4> type) {
        constexpr std::byte kSmallLetter{0x20};
        return (type[0] & kSmallLetter) == std::byte{} ||
               std::ranges::equal(type, std::as_bytes(std::span("tRNS", 4)));
    }

    EncodedImage rest_;
    std::uint64_t restOfChunk_ = kSignatureSize;
};

/// Converts the bytes red, green, blue, alpha to premultiplied pixels. Returns the bitwise AND of
/// the alphas.
std::uint32_t premultiply(std::span<std::uint32_t> pixels) {
    std::uint32_t alphas = 0xFF;
    for (auto& pixel : pixels) {
        const std::uint32_t alpha = pixel >> 24;
        alphas &= alpha;
        // Two channels are computed at a time; x / 255 is (x + x / 256 + 128) / 256, rounded.
        std::uint32_t redBlue = (pixel & 0xFF00FF) * alpha;
        redBlue = (redBlue + (redBlue >> 8 & 0xFF00FF) + 0x800080) >> 8 & 0xFF00FF;
        std::uint32_t green = (pixel >> 8 & 0xFF) * alpha;
        green = (green + (green >> 8) + 0x80) & 0xFF00;
        pixel = alpha << 24 | (redBlue & 0xFF) << 16 | green | redBlue >> 16;
    }
    return alphas;
}

/// Converts the bytes red, green, blue to pixels. A pixel is read as one word, so a byte has to
/// follow the last one.
void expand(const std::uint8_t* bytes, std::span<std::uint32_t> pixels) {
    for (auto& pixel : pixels) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        pixel = 0xFF000000 | __builtin_bswap32(word) >> 8;
        bytes += 3;
    }
}

void swapRedAndBlue(std::span<std::uint32_t> pixels) {
    for (auto& pixel : pixels)
        pixel = (pixel & 0xFF00FF00) | (pixel & 0xFF) << 16 | (pixel >> 16 & 0xFF);
}

/// Decodes the rows into pixels.
class PngDecoder {
 public:
    PngDecoder(spng_ctx* png, const spng_ihdr& header)
        : png_(png),
          isInterlaced_(header.interlace_method != SPNG_INTERLACE_NONE),
          width_(header.width),
          height_(header.height) {
        spng_trns transparency{};
        const bool hasTransparentColor = spng_get_trns(png, &transparency) == SPNG_OK;
        hasAlpha_ = header.color_type == SPNG_COLOR_TYPE_GRAYSCALE_ALPHA ||
                    header.color_type == SPNG_COLOR_TYPE_TRUECOLOR_ALPHA || hasTransparentColor;
        // libspng decodes 8-bit RGB, the usual case, faster without conversion.
        isPlain_ = header.color_type == SPNG_COLOR_TYPE_TRUECOLOR && header.bit_depth == 8 &&
                   !hasAlpha_ && !isInterlaced_;
        if (isPlain_) row_.resize(width_ * 3 + 1);
    }

    std::shared_ptr<const Image> decode() {
        const int format = isPlain_ ? SPNG_FMT_RGB8 : SPNG_FMT_RGBA8;
        const int flags = SPNG_DECODE_TRNS | SPNG_DECODE_PROGRESSIVE;
        if (spng_decode_image(png_, nullptr, 0, format, flags) != SPNG_OK) return nullptr;
        pixels_ = makePixels(width_ * height_);
        if (!pixels_) return nullptr;
        // The chunks after the pixels are checked too.
        if (!decodeRows() || spng_decode_chunks(png_) != SPNG_OK) return nullptr;
        if (isInterlaced_) finish({pixels_.get(), width_ * height_});
        return std::make_shared<const Image>(static_cast<int>(width_), static_cast<int>(height_),
                                             std::move(pixels_), alphas_ == 0xFF);
    }

 private:
    bool decodeRows() {
        TimeBudget budget;
        while (true) {
            spng_row_info info{};
            if (const int end = spng_get_row_info(png_, &info)) return end == SPNG_EOI;
            const std::span row(pixels_.get() + info.row_num * width_, width_);
            const int result = isPlain_ ? spng_decode_row(png_, row_.data(), width_ * 3)
                                        : spng_decode_row(png_, row.data(), row.size_bytes());
            if (result != SPNG_OK && result != SPNG_EOI) return false;
            // The rows of an interlaced picture are filled in several passes.
            if (!isInterlaced_) finish(row);
            if (result == SPNG_EOI) return true;
            if (budget.isSpentAfter(width_)) return false;
        }
    }

    void finish(std::span<std::uint32_t> decoded) {
        if (isPlain_) {
            expand(row_.data(), decoded);
        } else if (hasAlpha_) {
            alphas_ &= premultiply(decoded);
        } else {
            swapRedAndBlue(decoded);
        }
    }

    spng_ctx* png_;
    bool isInterlaced_;
    bool hasAlpha_;
    bool isPlain_;
    std::size_t width_;
    std::size_t height_;
    std::vector<std::uint8_t> row_;
    Image::Pixels pixels_;
    /// The bitwise AND of all alphas.
    std::uint32_t alphas_ = 0xFF;
};

}  // namespace

std::shared_ptr<const Image> decodePng(EncodedImage data) {
    // The chunks' checksums suffice. A second one over the inflated data would find nothing more.
    const std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)> png(
        spng_ctx_new(SPNG_CTX_IGNORE_ADLER32), spng_ctx_free);
    Chunks chunks(data);
    spng_ihdr header{};
    // No chunk is longer than the file, nor do all that libspng keeps take more.
    spng_set_image_limits(png.get(), kMaxSide, kMaxSide);
    spng_set_chunk_limits(png.get(), data.size(), data.size());
    spng_set_png_stream(png.get(), Chunks::read, &chunks);
    if (spng_get_ihdr(png.get(), &header) != SPNG_OK) return nullptr;
    if (!isAcceptedSize(header.width, header.height)) return nullptr;
    return PngDecoder(png.get(), header).decode();
}

}  // namespace VexmoraSDK::platform
