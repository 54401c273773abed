// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/cairo/FontFinder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <hb.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "VexmoraSDK/platform/cairo/PangoContexts.h"

namespace {

std::atomic<bool> isEnding = false;
std::filesystem::path fonts;

void endSearch() {
    isEnding = true;
    std::ofstream(fonts) << "<fontconfig><include>/etc/fonts/fonts.conf</include></fontconfig>";
    std::filesystem::remove(fonts);
    VexmoraSDK::platform::PangoContexts::forDirection(PANGO_DIRECTION_LTR);
}

// Reads the fonts from a pipe, into which nobody writes before the exit handlers have run.
[[noreturn]] void exitWhileFontsAreRead() {
    fonts = std::filesystem::temp_directory_path() / ("vexmora-" + std::to_string(getpid()));
    if (mkfifo(fonts.c_str(), S_IRWXU) != 0) abort();
    setenv("FONTCONFIG_FILE", fonts.c_str(), 1);
    // Runs last.
    if (std::atexit(endSearch) != 0) abort();
    VexmoraSDK::platform::findFontsInBackground();
    std::exit(0);
}

TEST(FontFinderDeathTest, LeavesToTheExitHandlersOfHarfBuzzWhatTheyFree) {
    EXPECT_EXIT(exitWhileFontsAreRead(), testing::ExitedWithCode(0), "");
}

}  // namespace

// Stands before that of HarfBuzz, for Pango too.
void hb_shape(hb_font_t* font, hb_buffer_t* buffer, const hb_feature_t* features,
              unsigned int count) {
    if (isEnding) _exit(1);
    static auto* const next = reinterpret_cast<decltype(&hb_shape)>(dlsym(RTLD_NEXT, "hb_shape"));
    next(font, buffer, features, count);
}
