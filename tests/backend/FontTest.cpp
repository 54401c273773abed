// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Font.h"

#include <fstream>
#include <iterator>

#include "tests/AppTest.h"
#include "tests/backend/Backend.h"

using testing::MatchesRegex;
using VexmoraSDK::AppTest;
using VexmoraSDK::platform::Font;

namespace {

using FontTest = AppTest;

/// The family and style found for a name.
std::string found(std::string_view name) {
    const auto font = Font::named(name, 12);
    return font ? font->family() + '/' + font->style() : "absent";
}

TEST_F(FontTest, FindsAnInstalledFamilyInItsStyles) {
    EXPECT_EQ(found("Liberation Sans"), "Liberation Sans/");
    EXPECT_EQ(found("Liberation Sans-Bold"), "Liberation Sans/Bold");
    EXPECT_EQ(Font::named("Liberation Sans", 13.5)->size(), 13.5);
}

TEST_F(FontTest, SubstitutesHelveticaAndTreatsObliqueAsItalic) {
    const std::string family = "(Helvetica|Nimbus Sans|Liberation Sans|Arial)/";
    EXPECT_THAT(found("Helvetica"), MatchesRegex(family));
    EXPECT_THAT(found("Helvetica-Bold"), MatchesRegex(family + "Bold"));
    EXPECT_THAT(found("Helvetica-Oblique"), MatchesRegex(family + "(Italic|Oblique)"));
    EXPECT_EQ(found("Helvetica-Oblique"), found("Helvetica-Italic"));
    EXPECT_EQ(found("Helvetica-BoldOblique"), found("Helvetica-BoldItalic"));
}

TEST_F(FontTest, IsAbsentWhenNotInstalled) {
    for (const auto* name : {"No Such Family", "No Such Family-Bold", "Helvetica-NoSuchStyle",
                             "Helvetica-", "-Bold", "-", ""}) {
        EXPECT_EQ(found(name), "absent") << name;
    }
}

TEST_F(FontTest, HasAnInstalledFontOfTheSystem) {
    const auto font = Font::system(12);
    EXPECT_TRUE(Font::named(font.family(), 12)) << font.family();
    EXPECT_EQ(font.size(), 12);
}

TEST_F(FontTest, NoticesAddedAndRemovedFonts) {
    // Copies an installed font under another name of the same length.
    std::ifstream file("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf");
    std::string font(std::istreambuf_iterator<char>(file), {});
    const auto rename = [&font](std::string_view from, std::string_view to) {
        for (auto at = font.find(from); at != std::string::npos; at = font.find(from, at))
            font.replace(at, to.size(), to);
    };
    using namespace std::string_view_literals;
    rename("\0L\0i\0b\0e\0r"sv, "\0C\0o\0m\0e\0t"sv);
    rename("Liber", "Comet");
    const auto path = testing::TempDir() + "Cometation.ttf";
    std::ofstream(path) << font;

    EXPECT_EQ(found("Cometation Sans"), "absent");
    VexmoraSDK::addFont(path);
    EXPECT_EQ(found("Cometation Sans"), "Cometation Sans/");
    VexmoraSDK::removeAddedFonts();
    EXPECT_EQ(found("Cometation Sans"), "absent");
}

}  // namespace
