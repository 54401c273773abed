// SPDX-License-Identifier: MIT
#include "tests/images/SamplePictures.h"

// jpeglib.h needs the first.
#include <cstdio>

#include <gif_lib.h>
#include <jpeglib.h>
#include <spng.h>
#include <webp/encode.h>
#include <webp/mux.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace VexmoraSDK {
namespace {

using platform::Data;

constexpr int kWidth = 19;
constexpr int kHeight = 13;

void require(bool succeeded) {
    if (!succeeded) std::abort();
}

Data dataAt(const void* bytes, std::size_t size) {
    const auto* begin = static_cast<const std::byte*>(bytes);
    return {begin, begin + size};
}

/// Channels of a picture with edges and gradients.
std::vector<std::uint8_t> channels(std::size_t count) {
    std::vector<std::uint8_t> values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = static_cast<std::uint8_t>(i * 7 + (i / 80) * 40);
    return values;
}

struct Png {
    int colorType;
    int bitDepth;
    bool isInterlaced = false;
    bool hasTransparentColor = false;
    bool hasOtherChunks = false;
};

Data encoded(const Png& wanted) {
    auto* png = spng_ctx_new(SPNG_CTX_ENCODER);
    spng_set_option(png, SPNG_ENCODE_TO_BUFFER, 1);
    spng_ihdr header{kWidth,
                     kHeight,
                     static_cast<std::uint8_t>(wanted.bitDepth),
                     static_cast<std::uint8_t>(wanted.colorType),
                     0,
                     0,
                     wanted.isInterlaced};
    spng_set_ihdr(png, &header);
    spng_plte palette{};
    palette.n_entries = 1U << std::min(wanted.bitDepth, 8);
    for (unsigned i = 0; i < palette.n_entries; ++i) {
        const auto level = static_cast<std::uint8_t>(i * 255 / (palette.n_entries - 1));
        palette.entries[i] = {level, static_cast<std::uint8_t>(255 - level), 90, 0};
    }
    if (wanted.colorType == SPNG_COLOR_TYPE_INDEXED) spng_set_plte(png, &palette);
    std::size_t size = 0;
    spng_decoded_image_size(png, SPNG_FMT_PNG, &size);
    const auto pixels = channels(size);
    if (wanted.hasTransparentColor) {
        // The colour of the first pixel, or half of the palette.
        spng_trns transparency{pixels[0], pixels[0], pixels[1], pixels[2], 2, {0, 128}};
        spng_set_trns(png, &transparency);
    }
    std::string words(1000, 'w');  // libspng reads it when it encodes.
    if (wanted.hasOtherChunks) {
        spng_set_gama(png, 0.8);
        spng_chrm_int chromaticities{31270, 32900, 64000, 33000, 21000, 71000, 15000, 6000};
        spng_set_chrm_int(png, &chromaticities);
        spng_text text{"Comment", SPNG_ZTXT, words.size(), words.data(), 1, 0, nullptr, nullptr};
        spng_set_text(png, &text, 1);
    }
    require(spng_encode_image(png, pixels.data(), size, SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE) == 0);
    int error = 0;
    const std::unique_ptr<void, decltype(&std::free)> bytes(spng_get_png_buffer(png, &size, &error),
                                                            std::free);
    spng_ctx_free(png);
    return dataAt(bytes.get(), size);
}

struct Jpeg {
    J_COLOR_SPACE given;
    J_COLOR_SPACE written;
    bool isProgressive = false;
    bool isByAdobe = false;
    int verticalSampling = 1;
};

Data encoded(const Jpeg& wanted, int width, int height, const std::vector<std::uint8_t>& pixels) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.in_color_space = wanted.given;
    jpeg.input_components = wanted.given == JCS_CMYK ? 4 : wanted.given == JCS_RGB ? 3 : 1;
    jpeg_set_defaults(&jpeg);
    jpeg_set_colorspace(&jpeg, wanted.written);
    jpeg.write_Adobe_marker = wanted.isByAdobe;
    jpeg.comp_info[0].v_samp_factor = jpeg.comp_info[0].h_samp_factor = wanted.verticalSampling;
    jpeg_set_quality(&jpeg, 90, TRUE);
    if (wanted.isProgressive) jpeg_simple_progression(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height) {
        const auto row = static_cast<std::size_t>(jpeg.next_scanline) * jpeg.image_width *
                         static_cast<std::size_t>(jpeg.input_components);
        auto* samples = const_cast<JSAMPROW>(pixels.data() + row);
        jpeg_write_scanlines(&jpeg, &samples, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owned(bytes, std::free);
    return dataAt(bytes, size);
}

Data encoded(const Jpeg& wanted) {
    return encoded(wanted, kWidth, kHeight, channels(kWidth * kHeight * 4));
}

Data webP(bool isLossless, bool hasAlpha) {
    const auto pixels = channels(kWidth * kHeight * 4);
    std::uint8_t* bytes = nullptr;
    const int stride = kWidth * (hasAlpha ? 4 : 3);
    const std::size_t size =
        isLossless
            ? (hasAlpha ? WebPEncodeLosslessRGBA(pixels.data(), kWidth, kHeight, stride, &bytes)
                        : WebPEncodeLosslessRGB(pixels.data(), kWidth, kHeight, stride, &bytes))
            : (hasAlpha ? WebPEncodeRGBA(pixels.data(), kWidth, kHeight, stride, 90, &bytes)
                        : WebPEncodeRGB(pixels.data(), kWidth, kHeight, stride, 90, &bytes));
    const std::unique_ptr<std::uint8_t, decltype(&WebPFree)> owned(bytes, WebPFree);
    return dataAt(bytes, size);
}

Data animatedWebP() {
    auto* encoder = WebPAnimEncoderNew(kWidth, kHeight, nullptr);
    WebPConfig config;
    WebPConfigInit(&config);
    config.lossless = 1;
    auto pixels = channels(kWidth * kHeight * 4);
    for (int time = 0; time < 200; time += 100) {
        WebPPicture frame;
        WebPPictureInit(&frame);
        frame.use_argb = 1;
        frame.width = kWidth;
        frame.height = kHeight;
        WebPPictureImportRGBA(&frame, pixels.data(), kWidth * 4);
        require(WebPAnimEncoderAdd(encoder, &frame, time, &config));
        WebPPictureFree(&frame);
        pixels = std::vector<std::uint8_t>(pixels.rbegin(), pixels.rend());
    }
    WebPAnimEncoderAdd(encoder, nullptr, 200, nullptr);
    WebPData file{};
    require(WebPAnimEncoderAssemble(encoder, &file));
    WebPAnimEncoderDelete(encoder);
    auto data = dataAt(file.bytes, file.size);
    WebPDataClear(&file);
    return data;
}

int write(GifFileType* gif, const GifByteType* bytes, int size) {
    auto& data = *static_cast<Data*>(gif->UserData);
    const auto* begin = reinterpret_cast<const std::byte*>(bytes);
    data.insert(data.end(), begin, begin + size);
    return size;
}

Data gif(bool isInterlaced, bool isTransparent) {
    Data data;
    auto* gif = EGifOpen(&data, write, nullptr);
    GifColorType colors[16];
    for (int i = 0; i < 16; ++i) {
        const auto level = static_cast<GifByteType>(i * 17);
        colors[i] = {level, static_cast<GifByteType>(255 - level), 60};
    }
    auto* map = GifMakeMapObject(16, colors);
    EGifSetGifVersion(gif, true);
    require(EGifPutScreenDesc(gif, kWidth, kHeight, 4, 0, map) == GIF_OK);
    if (isTransparent) {
        const GraphicsControlBlock control{0, false, 0, 3};
        GifByteType block[4];
        EGifGCBToExtension(&control, block);
        require(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, block) == GIF_OK);
    }
    require(EGifPutImageDesc(gif, 0, 0, kWidth, kHeight, isInterlaced, nullptr) == GIF_OK);
    // The rows of an interlaced picture are written in the order of its passes.
    for (int y = 0; y < kHeight; ++y) {
        GifPixelType line[kWidth];
        for (int x = 0; x < kWidth; ++x)
            line[x] = static_cast<GifPixelType>((x / 2 + y * 3) % 16);
        require(EGifPutLine(gif, line, kWidth) == GIF_OK);
    }
    require(EGifCloseFile(gif, nullptr) == GIF_OK);
    GifFreeMapObject(map);
    return data;
}

}  // namespace

const std::map<std::string, Data>& samplePictures() {
    constexpr int kGrey = SPNG_COLOR_TYPE_GRAYSCALE;
    constexpr int kGreyAlpha = SPNG_COLOR_TYPE_GRAYSCALE_ALPHA;
    constexpr int kColor = SPNG_COLOR_TYPE_TRUECOLOR;
    constexpr int kAlpha = SPNG_COLOR_TYPE_TRUECOLOR_ALPHA;
    constexpr int kIndexed = SPNG_COLOR_TYPE_INDEXED;
    static const auto& samples = *new std::map<std::string, Data>{
        {"PNG in colour", encoded(Png{kColor, 8})},
        {"PNG in colour, interlaced", encoded(Png{kColor, 8, true})},
        {"PNG in colour, one of them transparent", encoded(Png{kColor, 8, false, true})},
        {"PNG in colour, 16 bits", encoded(Png{kColor, 16})},
        {"PNG with alpha", encoded(Png{kAlpha, 8})},
        {"PNG with alpha, interlaced, gamma and text", encoded(Png{kAlpha, 8, true, false, true})},
        {"PNG with alpha, 16 bits", encoded(Png{kAlpha, 16})},
        {"PNG in grey", encoded(Png{kGrey, 8})},
        {"PNG in grey, one bit", encoded(Png{kGrey, 1})},
        {"PNG in grey, 4 bits, one transparent", encoded(Png{kGrey, 4, false, true})},
        {"PNG in grey, 16 bits, interlaced", encoded(Png{kGrey, 16, true})},
        {"PNG in grey, with alpha", encoded(Png{kGreyAlpha, 8})},
        {"PNG with a palette", encoded(Png{kIndexed, 8})},
        {"PNG with a palette, 2 bits, interlaced, transparent",
         encoded(Png{kIndexed, 2, true, true})},
        {"PNG with gamma and colours", encoded(Png{kColor, 8, false, false, true})},
        {"JPEG", encoded(Jpeg{JCS_RGB, JCS_YCbCr})},
        {"JPEG, subsampled", encoded(Jpeg{JCS_RGB, JCS_YCbCr, false, false, 2})},
        {"JPEG in RGB", encoded(Jpeg{JCS_RGB, JCS_RGB, false, true})},
        {"JPEG in grey", encoded(Jpeg{JCS_GRAYSCALE, JCS_GRAYSCALE})},
        {"JPEG in YCCK by Adobe", encoded(Jpeg{JCS_CMYK, JCS_YCCK, false, true})},
        {"JPEG in CMYK by Adobe", encoded(Jpeg{JCS_CMYK, JCS_CMYK, false, true})},
        {"JPEG, progressive", encoded(Jpeg{JCS_RGB, JCS_YCbCr, true, false, 2})},
        {"JPEG, to be turned", turnedJpeg(encoded(Jpeg{JCS_RGB, JCS_YCbCr}), 6)},
        {"WebP", webP(false, false)},
        {"WebP with alpha", webP(false, true)},
        {"WebP, lossless", webP(true, false)},
        {"WebP, lossless, with alpha", webP(true, true)},
        {"WebP, animated", animatedWebP()},
        {"GIF", gif(false, false)},
        {"GIF, interlaced and transparent", gif(true, true)},
    };
    return samples;
}

Data jpegInInks(bool byAdobe) {
    constexpr int kSide = 8;
    std::vector<std::uint8_t> inks;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < 2 * kSide; ++x) {
            for (const int ink : {x < kSide ? 0 : 255, 0, 0, 0})
                inks.push_back(static_cast<std::uint8_t>(byAdobe ? 255 - ink : ink));
        }
    }
    return encoded(Jpeg{JCS_CMYK, JCS_CMYK, false, byAdobe}, 2 * kSide, kSide, inks);
}

Data turnedJpeg(const Data& jpeg, int orientation) {
    std::string marker(
        "\xFF\xE1\0\x22"
        "Exif\0\0"
        "MM\0*\0\0\0\x08"
        "\0\x01"
        "\x01\x12\0\x03\0\0\0\x01"
        "\0\0\0\0"
        "\0\0\0\0",
        36);
    marker[29] = static_cast<char>(orientation);
    auto turned = platform::dataOf(marker);
    turned.insert(turned.begin(), jpeg.begin(), jpeg.begin() + 2);
    turned.insert(turned.end(), jpeg.begin() + 2, jpeg.end());
    return turned;
}

}  // namespace VexmoraSDK
