// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/Image.h"

#include <gmock/gmock.h>

#include <array>
#include <span>

#include "tests/PlainPicture.h"
#include "tests/images/SamplePictures.h"

namespace VexmoraSDK::platform {
namespace {

const Data& sample(const std::string& name) {
    return samplePictures().at(name);
}

Data without(const Data& data, std::ptrdiff_t count) {
    return {data.begin(), data.end() - count};
}

Data inserted(Data data, std::ptrdiff_t at, std::string_view bytes) {
    const auto more = dataOf(bytes);
    data.insert(data.begin() + at, more.begin(), more.end());
    return data;
}

std::string hex(std::uint32_t pixel) {
    char text[9];
    std::snprintf(text, sizeof text, "%08X", pixel);
    return text;
}

TEST(ImageTest, DecodesWholePicturesAndNoTruncatedOnes) {
    for (const auto& [name, data] : samplePictures()) {
        const auto image = Image::fromData(data);
        ASSERT_TRUE(image) << name;
        EXPECT_EQ(image->width() + image->height(), 19 + 13) << name;
        // The last byte of a GIF, its trailer, and the last four of a PNG, a checksum, are not
        // needed.
        const int unneeded = name.starts_with("GIF") ? 1 : name.starts_with("PNG") ? 4 : 0;
        for (std::ptrdiff_t missing = unneeded + 1; missing <= std::ssize(data); ++missing) {
            EXPECT_FALSE(Image::fromData(without(data, missing)))
                << name << ", without " << missing;
        }
    }
    for (const std::string_view bytes :
         {"", "garbage", "<svg width='9' height='9'/>", "BM\x46\x0e"})
        EXPECT_FALSE(Image::fromData(dataOf(bytes))) << bytes;
}

TEST(ImageTest, SurvivesAnyOneChangedByte) {
    for (const auto& [name, data] : samplePictures()) {
        for (std::size_t at = 0; at < data.size(); ++at) {
            for (const std::byte flip : {std::byte{0x01}, std::byte{0x80}, std::byte{0xFF}}) {
                auto damaged = data;
                damaged[at] ^= flip;
                const auto image = Image::fromData(damaged);
                if (!image) continue;
                const auto pixels = std::size_t(image->width()) * std::size_t(image->height());
                EXPECT_LE(pixels, 16'000'000) << name << " at " << at;
                const bool isOpaque =
                    std::ranges::all_of(std::span(image->pixels(), pixels),
                                        [](auto pixel) { return pixel >> 24 == 255; });
                EXPECT_LE(image->isOpaque(), isOpaque) << name << " at " << at;
            }
        }
    }
}

TEST(ImageTest, ConvertsCmykAsTheProgramThatWroteItMeantIt) {
    for (const bool byAdobe : {false, true}) {
        const auto image = Image::fromData(jpegInInks(byAdobe));
        ASSERT_TRUE(image);
        EXPECT_EQ(hex(image->pixels()[2]), "FFFFFFFF") << byAdobe;
        EXPECT_EQ(hex(image->pixels()[13]), "FF00FFFF") << byAdobe;
    }
}

TEST(ImageTest, TurnsAJpegByItsOrientation) {
    const auto& upright = sample("JPEG");
    const auto image = Image::fromData(upright);
    const auto at = [](const Image& of, int x, int y) {
        return hex(of.pixels()[y * of.width() + x]);
    };
    const std::array corners{at(*image, 0, 0), at(*image, 18, 0), at(*image, 0, 12),
                             at(*image, 18, 12)};
    // The upright picture's corners as each orientation shows them, from the top left.
    const std::array<std::array<std::size_t, 4>, 9> expected{{{0, 1, 2, 3},
                                                              {0, 1, 2, 3},
                                                              {1, 0, 3, 2},
                                                              {3, 2, 1, 0},
                                                              {2, 3, 0, 1},
                                                              {0, 2, 1, 3},
                                                              {2, 0, 3, 1},
                                                              {3, 1, 2, 0},
                                                              {1, 3, 0, 2}}};
    for (int orientation = 0; orientation <= 8; ++orientation) {
        const auto turned = Image::fromData(turnedJpeg(upright, orientation));
        ASSERT_TRUE(turned);
        const bool isUpright = orientation < 5;
        EXPECT_EQ(turned->size(), (isUpright ? Size{19, 13} : Size{13, 19})) << orientation;
        const int right = turned->width() - 1;
        const int bottom = turned->height() - 1;
        const std::array shown{at(*turned, 0, 0), at(*turned, right, 0), at(*turned, 0, bottom),
                               at(*turned, right, bottom)};
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(shown[i], corners[expected[static_cast<std::size_t>(orientation)][i]])
                << orientation << ", corner " << i;
        }
    }
}

TEST(ImageTest, DecodesPicturesThatAreOnlyUnusual) {
    const auto shows = [](const Data& data) { return Image::fromData(data) != nullptr; };
    const auto& jpeg = sample("JPEG");
    auto revision = jpeg;
    revision[11] = std::byte{9};
    EXPECT_TRUE(shows(revision)) << "a JFIF revision of the future";
    EXPECT_TRUE(shows(inserted(jpeg, 20, "stray"))) << "bytes between markers";
    EXPECT_TRUE(shows(inserted(jpeg, std::ssize(jpeg), "more"))) << "bytes after the end";

    const auto& png = sample("PNG in colour");
    EXPECT_TRUE(shows(inserted(png, std::ssize(png), "more"))) << "bytes after the end";
    const std::string_view text("\0\0\0\x04tEXtk\0vv\1\2\3\4", 16);
    EXPECT_TRUE(shows(inserted(png, 33, text))) << "a text whose checksum is wrong";
    auto pixels = png;
    pixels[png.size() - 13] ^= std::byte{1};
    EXPECT_FALSE(shows(pixels)) << "pixels whose checksum is wrong";
}

TEST(ImageTest, DecodesAtMostSixteenMillionPixelsAndSixtyFiveThousandOnASide) {
    EXPECT_TRUE(Image::fromData(dataOf(plainPicture(4000, 4000))));
    EXPECT_FALSE(Image::fromData(dataOf(plainPicture(4000, 4001))));

    // Sizes that a header only claims are refused before memory is taken for them.
    struct Lie {
        const char* name;
        std::ptrdiff_t at;
        std::string_view size;
    };
    using namespace std::string_view_literals;
    for (const auto& [name, at, size] :
         {Lie{"PNG in colour", 16, "\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF"sv},
          Lie{"PNG in colour", 16, "\0\xF4\x24\0\0\0\0\x01"sv}, Lie{"GIF", 6, "\xFF\xFF\xFF\xFF"sv},
          Lie{"WebP", 26, "\xFF\x3F\xFF\x3F"sv}}) {
        auto data = sample(name);
        std::ranges::copy(dataOf(size), data.begin() + at);
        EXPECT_FALSE(Image::fromData(data)) << name;
    }
}

TEST(ImageTest, CountsTheScansOfAJpegBeforeItDecodesThem) {
    // The picture repeats its first scan.
    const auto& jpeg = sample("JPEG, progressive");
    const auto text = textOf(jpeg);
    const auto first = text.find("\xFF\xDA");
    const std::string scan(text.substr(first, text.find("\xFF\xC4", first) - first));
    const auto withScans = [&](std::size_t more) {
        std::string scans;
        for (std::size_t i = 0; i < more; ++i)
            scans += scan;
        return inserted(jpeg, std::ssize(jpeg) - 2, scans);
    };
    EXPECT_TRUE(Image::fromData(withScans(100)));
    EXPECT_FALSE(Image::fromData(withScans(256)));
}

SharedData sharedPicture(unsigned width, unsigned height) {
    return std::make_shared<const Data>(dataOf(plainPicture(width, height)));
}

TEST(ImageTest, DecodesSharedBytesOnceWhileThePictureIsShownOrAmongTheLatest) {
    const auto data = sharedPicture(1000, 1000);
    auto shown = Image::fromData(data);
    ASSERT_TRUE(shown);
    EXPECT_EQ(Image::fromData(data), shown);
    EXPECT_NE(Image::fromData(std::make_shared<const Data>(*data)), shown);

    // Two more fit into the 8 MiB of the latest pictures; a third evicts the first one.
    const std::weak_ptr<const Image> first = shown;
    const std::array others{sharedPicture(500, 1000), sharedPicture(500, 1000),
                            sharedPicture(1000, 1000)};
    Image::fromData(others[0]);
    EXPECT_EQ(Image::fromData(data), shown);
    shown.reset();
    EXPECT_FALSE(first.expired());
    Image::fromData(others[1]);
    Image::fromData(others[2]);
    EXPECT_TRUE(first.expired());
}

TEST(ImageTest, ReleasesPicturesWhoseBytesNobodyHolds) {
    auto data = sharedPicture(20, 10);
    const std::weak_ptr<const Image> image = Image::fromData(data);
    EXPECT_FALSE(image.expired());
    data.reset();
    // Before the next decoding, whatever it gives.
    EXPECT_FALSE(Image::fromData(std::make_shared<const Data>()));
    EXPECT_TRUE(image.expired());
}

}  // namespace
}  // namespace VexmoraSDK::platform
