// SPDX-License-Identifier: MIT
// jpeglib.h needs the first.
#include <cstdio>

#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <csetjmp>
#include <optional>
#include <vector>

#include "VexmoraSDK/platform/images/Codecs.h"
#include "VexmoraSDK/platform/images/JpegMarkers.h"
#include "VexmoraSDK/platform/images/TimeBudget.h"

namespace VexmoraSDK::platform {
namespace {

/// An ordinary progressive picture has ten scans. Each one costs a pass over all pixels, however
/// small it is.
constexpr std::uint64_t kMaxScans = 256;
constexpr std::uint64_t kMaxPixelsOfAllScans = 32 * kMaxPixels;

/// Maps the coded pixel in column x and row y to the index `first + x * right + y * down`.
struct Placement {
    int width;
    int height;
    std::ptrdiff_t first;
    std::ptrdiff_t right;
    std::ptrdiff_t down;
};

Placement placementFor(int orientation, int width, int height) {
    const std::ptrdiff_t w = width;
    const std::ptrdiff_t h = height;
    switch (orientation) {
        case 2: return {width, height, w - 1, -1, w};
        case 3: return {width, height, w * h - 1, -1, -w};
        case 4: return {width, height, w * (h - 1), 1, -w};
        case 5: return {height, width, 0, h, 1};
        case 6: return {height, width, h - 1, h, -1};
        case 7: return {height, width, w * h - 1, -h, -1};
        case 8: return {height, width, h * (w - 1), -h, 1};
        default: return {width, height, 0, 1, w};
    }
}

/// Converts the bytes cyan, magenta, yellow, black to pixels. Adobe's programs write 255 for no
/// ink.
void convertInks(std::span<std::uint32_t> pixels, bool isInverted) {
    const std::uint32_t inversion = isInverted ? 0 : 0xFFFFFFFF;
    for (auto& pixel : pixels) {
        const std::uint32_t light = pixel ^ inversion;
        const auto mixed = [light](int shift) {
            const std::uint32_t product = (light >> shift & 0xFF) * (light >> 24);
            return (product + 127) / 255;
        };
        pixel = 0xFF000000 | mixed(0) << 16 | mixed(8) << 8 | mixed(16);
    }
}

/// libjpeg leaves a failed call by a jump, which runs no destructors, so the functions that call it
/// have no locals with destructors.
class JpegDecoder {
 public:
    explicit JpegDecoder(EncodedImage data) : data_(data), markers_(data) {
        jpeg_.err = jpeg_std_error(&errors_);
        errors_.error_exit = [](j_common_ptr jpeg) { of(jpeg).refuse(); };
        errors_.emit_message = [](j_common_ptr jpeg, int level) { of(jpeg).hear(level); };
        progress_.progress_monitor = [](j_common_ptr jpeg) { of(jpeg).countProgress(); };
        jpeg_.client_data = this;
    }
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;
    ~JpegDecoder() { jpeg_destroy_decompress(&jpeg_); }

    std::shared_ptr<const Image> decode() {
        if (!readHeader() || !isAccepted()) return nullptr;
        const auto width = static_cast<int>(jpeg_.image_width);
        const auto height = static_cast<int>(jpeg_.image_height);
        placement_ = placementFor(markers_.orientation(), width, height);
        pixels_ = makePixels(std::size_t{jpeg_.image_width} * jpeg_.image_height);
        if (!pixels_) return nullptr;
        row_.resize(kRowBegin + jpeg_.image_width);
        if (!readPixels()) return nullptr;
        return std::make_shared<const Image>(placement_.width, placement_.height,
                                             std::move(pixels_), true);
    }

 private:
    static JpegDecoder& of(j_common_ptr jpeg) {
        return *static_cast<JpegDecoder*>(jpeg->client_data);
    }

    [[noreturn]] void refuse() { std::longjmp(refusal_, 1); }

    /// libjpeg's warning of an early end means missing pixels, so the picture is refused. Its other
    /// warnings, such as stray bytes between markers, are harmless.
    void hear(int level) {
        const int code = errors_.msg_code;
        if (level < 0 && (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER)) refuse();
    }

    /// Called after each row of blocks read and each row of pixels written.
    void countProgress() {
        if (budget_.isSpentAfter(jpeg_.image_width * 8)) refuse();
    }

    bool readHeader() {
        if (setjmp(refusal_) != 0) return false;
        jpeg_create_decompress(&jpeg_);
        jpeg_.progress = &progress_;
        jpeg_mem_src(&jpeg_, reinterpret_cast<const unsigned char*>(data_.data()), data_.size());
        return jpeg_read_header(&jpeg_, TRUE) == JPEG_HEADER_OK;
    }

    bool isAccepted() {
        if (!isAcceptedSize(jpeg_.image_width, jpeg_.image_height)) return false;
        // Otherwise libjpeg refuses a second scan.
        if (!jpeg_has_multiple_scans(&jpeg_)) return true;
        const std::uint64_t pixels = std::uint64_t{jpeg_.image_width} * jpeg_.image_height;
        const std::uint64_t scans = markers_.countScans();
        return scans <= kMaxScans && pixels * scans <= kMaxPixelsOfAllScans;
    }

    bool readPixels() {
        if (setjmp(refusal_) != 0) return false;
        const bool hasInks =
            jpeg_.jpeg_color_space == JCS_CMYK || jpeg_.jpeg_color_space == JCS_YCCK;
        jpeg_.out_color_space = hasInks ? JCS_CMYK : JCS_EXT_BGRA;
        jpeg_start_decompress(&jpeg_);
        const auto row = std::span(row_).subspan(kRowBegin);
        auto* bytes = reinterpret_cast<JSAMPROW>(row.data());
        while (jpeg_.output_scanline < jpeg_.output_height) {
            const auto y = static_cast<std::ptrdiff_t>(jpeg_.output_scanline);
            auto* target = pixels_.get() + placement_.first + y * placement_.down;
            jpeg_read_scanlines(&jpeg_, &bytes, 1);
            if (hasInks) convertInks(row, jpeg_.saw_Adobe_marker);
            if (placement_.right == 1) {
                std::ranges::copy(row, target);
                continue;
            }
            for (const auto pixel : row) {
                *target = pixel;
                target += placement_.right;
            }
        }
        return jpeg_finish_decompress(&jpeg_);
    }

    EncodedImage data_;
    JpegMarkers markers_;
    jpeg_decompress_struct jpeg_{};
    jpeg_error_mgr errors_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf refusal_{};
    TimeBudget budget_;
    Placement placement_{};
    Image::Pixels pixels_;
    /// Holds a coded row from `kRowBegin` on. libjpeg-turbo would write a row whose address is a
    /// multiple of 16 past the caches, and painting would wait for memory.
    std::vector<std::uint32_t> row_;
    static constexpr std::size_t kRowBegin = 1;
};

}  // namespace

std::shared_ptr<const Image> decodeJpeg(EncodedImage data) {
    return JpegDecoder(data).decode();
}

}  // namespace VexmoraSDK::platform
