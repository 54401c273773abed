// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "VexmoraSDK/platform/images/Image.h"

// compare_pictures THERE HERE AGAIN: compares the pictures that a program made on another processor
// with those made here. Each is a folder; AGAIN has what the same run made here once more. A
// picture that is not the same twice here shows the time and is not compared.

namespace {

using VexmoraSDK::platform::Image;

// Qt blends the ends of rows with other instructions on another processor: that shows at the edges
// of rounded corners.
constexpr int kMaxLevels = 5;  // of 255
constexpr double kMaxShare = 0.001;

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Difference {
    double share = 1;
    int levels = 255;
};

Difference difference(const std::string& oneFile, const std::string& otherFile) {
    const auto one = Image::fromData(VexmoraSDK::platform::dataOf(oneFile));
    const auto other = Image::fromData(VexmoraSDK::platform::dataOf(otherFile));
    if (!one || !other || one->width() != other->width() || one->height() != other->height())
        return {};
    const auto count =
        static_cast<std::size_t>(one->width()) * static_cast<std::size_t>(one->height());
    std::size_t different = 0;
    int levels = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t a = one->pixels()[i];
        const std::uint32_t b = other->pixels()[i];
        different += a != b;
        for (int shift = 0; shift < 32; shift += 8) {
            const int apart =
                static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255);
            levels = std::max(levels, std::abs(apart));
        }
    }
    return {static_cast<double>(different) / static_cast<double>(count), levels};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const std::filesystem::path there(argv[1]), here(argv[2]), again(argv[3]);
    int same = 0;
    int others = 0;
    for (const auto& entry : std::filesystem::directory_iterator(here)) {
        const auto name = entry.path().filename();
        const auto made = bytesOf(entry.path());
        const auto madeThere = bytesOf(there / name);
        if (made == madeThere) {
            ++same;
        } else if (made != bytesOf(again / name)) {
            std::printf("not compared: %s\n", name.c_str());
        } else {
            const auto [share, levels] = difference(made, madeThere);
            const bool isClose = share <= kMaxShare && levels <= kMaxLevels;
            others += !isClose;
            std::printf("%s: %s, %.3f %% of the pixels by at most %d of 255\n",
                        isClose ? "nearly the same" : "OTHER", name.c_str(), share * 100, levels);
        }
    }
    std::printf("%d are the same, byte for byte\n", same);
    return others > 0 || same == 0;
}
