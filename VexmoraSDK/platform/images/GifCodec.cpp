// SPDX-License-Identifier: MIT
#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <vector>

#include "VexmoraSDK/platform/images/Codecs.h"
#include "VexmoraSDK/platform/images/TimeBudget.h"

namespace VexmoraSDK::platform {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

class GifDecoder {
 public:
    explicit GifDecoder(EncodedImage data) : rest_(data), gif_(DGifOpen(this, read, nullptr)) {}
    GifDecoder(const GifDecoder&) = delete;
    GifDecoder& operator=(const GifDecoder&) = delete;
    ~GifDecoder() {
        if (gif_) DGifCloseFile(gif_, nullptr);
    }

    std::shared_ptr<const Image> decode() {
        if (!gif_ || !findFirstFrame() || DGifGetImageDesc(gif_) == GIF_ERROR) return nullptr;
        const auto& frame = gif_->Image;
        // A screen without a size takes that of its first frame.
        width_ = unsignedOf(gif_->SWidth > 0 ? gif_->SWidth : frame.Left + frame.Width);
        height_ = unsignedOf(gif_->SHeight > 0 ? gif_->SHeight : frame.Top + frame.Height);
        if (!isAcceptedSize(width_, height_)) return nullptr;
        if (!isAcceptedSize(unsignedOf(frame.Width), unsignedOf(frame.Height))) return nullptr;
        pixels_ = makePixels(width_ * height_);
        if (!pixels_) return nullptr;
        const bool isCovered = frame.Left == 0 && frame.Top == 0 && frame.Width >= gif_->SWidth &&
                               frame.Height >= gif_->SHeight;
        if (!isCovered) std::fill_n(pixels_.get(), width_ * height_, 0);
        if (!decodeFrame()) return nullptr;
        return std::make_shared<const Image>(static_cast<int>(width_), static_cast<int>(height_),
                                             std::move(pixels_), isCovered && alphas_ == kOpaque);
    }

 private:
    /// giflib's numbers are signed, but read from 16 bits of the file.
    static std::size_t unsignedOf(int number) { return static_cast<std::size_t>(number); }

    static int read(GifFileType* gif, GifByteType* target, int size) {
        auto& rest = static_cast<GifDecoder*>(gif->UserData)->rest_;
        const auto part = rest.first(std::min(rest.size(), static_cast<std::size_t>(size)));
        std::ranges::copy(part, reinterpret_cast<std::byte*>(target));
        rest = rest.subspan(part.size());
        return static_cast<int>(part.size());
    }

    bool findFirstFrame() {
        GifRecordType type{};
        while (DGifGetRecordType(gif_, &type) != GIF_ERROR) {
            if (type == IMAGE_DESC_RECORD_TYPE) return true;
            if (type != EXTENSION_RECORD_TYPE || !readExtension()) return false;
        }
        return false;
    }

    bool readExtension() {
        int code = 0;
        GifByteType* block = nullptr;
        if (DGifGetExtension(gif_, &code, &block) == GIF_ERROR) return false;
        while (block) {
            GraphicsControlBlock control{};
            if (code == GRAPHICS_EXT_FUNC_CODE &&
                DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
                transparentColor_ = control.TransparentColor;
            }
            if (DGifGetExtensionNext(gif_, &block) == GIF_ERROR) return false;
        }
        return true;
    }

    bool decodeFrame() {
        const auto& frame = gif_->Image;
        const auto colors = colorsOfFrame();
        std::vector<GifByteType> line(static_cast<std::size_t>(frame.Width));
        struct Pass {
            int first;
            int step;
        };
        constexpr Pass kWhole[] = {{0, 1}};
        constexpr Pass kInterlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
        const auto passes =
            frame.Interlace ? std::span<const Pass>(kInterlaced) : std::span<const Pass>(kWhole);
        TimeBudget budget;
        for (const auto& [first, step] : passes) {
            for (int y = first; y < frame.Height; y += step) {
                if (DGifGetLine(gif_, line.data(), frame.Width) == GIF_ERROR) return false;
                if (budget.isSpentAfter(line.size())) return false;
                show(line, y, colors);
            }
        }
        return true;
    }

    using Colors = std::array<std::uint32_t, 256>;

    // A colour missing from the map is transparent.
    Colors colorsOfFrame() const {
        Colors colors{};
        const auto* map = gif_->Image.ColorMap ? gif_->Image.ColorMap : gif_->SColorMap;
        for (int i = 0; map && i < map->ColorCount; ++i) {
            const auto [red, green, blue] = map->Colors[i];
            colors[static_cast<std::size_t>(i)] =
                kOpaque | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | blue;
        }
        if (transparentColor_ >= 0) colors[static_cast<std::size_t>(transparentColor_)] = 0;
        return colors;
    }

    void show(const std::vector<GifByteType>& line, int y, const Colors& colors) {
        const auto row = static_cast<std::size_t>(gif_->Image.Top + y);
        const auto left = static_cast<std::size_t>(gif_->Image.Left);
        if (row >= height_ || left >= width_) return;
        auto* target = pixels_.get() + row * width_ + left;
        const std::size_t visible = std::min(line.size(), width_ - left);
        for (std::size_t x = 0; x < visible; ++x) {
            target[x] = colors[line[x]];
            alphas_ &= target[x];
        }
    }

    EncodedImage rest_;
    GifFileType* gif_;
    int transparentColor_ = NO_TRANSPARENT_COLOR;
    /// The bitwise AND of the alphas of all visible pixels.
    std::uint32_t alphas_ = kOpaque;
    std::size_t width_ = 0;
    std::size_t height_ = 0;
    Image::Pixels pixels_;
};

}  // namespace

std::shared_ptr<const Image> decodeGif(EncodedImage data) {
    return GifDecoder(data).decode();
}

}  // namespace VexmoraSDK::platform
