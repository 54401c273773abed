// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/TextLayout.h"

#include "tests/AppTest.h"

using VexmoraSDK::AppTest;
using VexmoraSDK::platform::Font;
using VexmoraSDK::platform::Size;
using VexmoraSDK::platform::TextLayout;

namespace {

class TextLayoutTest : public AppTest {
 protected:
    Size measure(const std::string& text, double width) const {
        return TextLayout(text, font_, width).size();
    }

    double lines(const std::string& text, double width) const {
        return measure(text, width).height / line_;
    }

    const Font font_ = Font::named("Helvetica", 12).value();
    const double line_ = measure("", 100).height;
};

constexpr double kWide = 10000;

TEST_F(TextLayoutTest, BreaksLinesAtSeparators) {
    for (const auto* text : {"a\nb", "a\r\nb", "a\rb", "a\u2028b", "a\u2029b", "a\n"})
        EXPECT_EQ(lines(text, kWide), 2) << text;
    const double title =
        TextLayout("Ågj", Font::named("Helvetica-Bold", 13).value(), 100).size().height;
    EXPECT_GE(title, 13);
    EXPECT_LE(title, 18);
    EXPECT_EQ(lines("Coffee", kWide), 1);
    EXPECT_EQ(lines("a\n\nb", kWide), 3);
    EXPECT_EQ(lines("\n\n", kWide), 3);
}

TEST_F(TextLayoutTest, WrapsAtWordsAndBreaksThoseThatAreTooLong) {
    const Size word = measure("incomprehensible", kWide);
    EXPECT_EQ(measure("incomprehensible incomprehensible", word.width),
              (Size{word.width, 2 * line_}));

    const Size broken = measure("incomprehensible", word.width / 2);
    EXPECT_LE(broken.width, word.width / 2);
    EXPECT_GE(broken.height, 2 * line_);
}

TEST_F(TextLayoutTest, WrapsNoFurtherInTheWidthThatItMeasuredAndMeasuresNoMoreThanItIsGiven) {
    std::string viramas;
    for (int i = 0; i < 500; ++i)
        viramas += "क्";
    for (const std::string text :
         {"Roasted at dawn, at your door by noon: coffee from the harbour.",
          "AVAVAVA VAVAVA, Wolf.", "Donaudampfschifffahrtsgesellschaftskapitän",
          "Кофе из гавани — каждое утро", "港のそばで焙煎したコーヒーを毎朝お届けします。",
          "قهوة طازجة كل صباح من الميناء", "קפה טרי מהנמל בכל בוקר", "กาแฟคั่วสดใหม่ทุกเช้าจากท่าเรือ",
          "Half עברית, half English: 50 % off", "Soft\u00adhyphens\u00adin\u00ada\u00adword",
          "Coffee ☕ and 👩‍👩‍👧 and 🇫🇮 in a row", "trailing blanks     ",
          "e\u0301e\u0301e\u0301e\u0301e\u0301", viramas.c_str()}) {
        for (double width = 0; width < 320; width += 3.7) {
            const Size measured = measure(text, width);
            EXPECT_LE(measured.width, width) << text;
            EXPECT_EQ(measure(text, measured.width), measured) << text << " in " << width;
            EXPECT_EQ(measured.width, std::ceil(measured.width));
        }
    }
}

TEST_F(TextLayoutTest, TakesAnyWidthAndAnyBytes) {
    EXPECT_EQ(measure("Coffee", std::numeric_limits<double>::max()), measure("Coffee", kWide));
    EXPECT_EQ(measure("abc", -1), measure("abc", 0));
    EXPECT_EQ(lines("\xff\xfe caf\xc3", kWide), 1);
    EXPECT_EQ(lines(std::string("a\0b", 3), kWide), 1);
}

TEST_F(TextLayoutTest, LaysOutTheBeginningOfATextThatIsTooLong) {
    const auto repeated = [](std::string_view letter, std::string text = {}) {
        while (text.size() < 1'000'000)
            text += letter;
        return text;
    };
    for (const auto* letter : {"a", "漢", "\n", "a\n"})
        EXPECT_EQ(lines(repeated(letter), 0), 100) << letter;
    const auto width = [&](const std::string& text) { return measure(text, 1e6).width; };
    EXPECT_EQ(width(repeated("a")), width(std::string(2048, 'a')));
    // The last face would be cut in half.
    std::string faces = "a";
    for (int i = 0; i < 1023; ++i)
        faces += "😀";
    EXPECT_EQ(width(repeated("😀", "a")), width(faces));
    EXPECT_EQ(lines(repeated("\u0301", "e"), 0), 1);
}

TEST_F(TextLayoutTest, PrintsNoWarningAboutScriptsThatTheFontLacks) {
    measure("Coffee", kWide);
    testing::internal::CaptureStderr();
    measure("क्षत्रिय कॉफ़ी", kWide);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(TextLayoutTest, MeasuresInTheGivenFont) {
    const auto widthIn = [](const char* font, double size) {
        return TextLayout("Coffee", Font::named(font, size).value(), kWide).size().width;
    };
    EXPECT_LT(widthIn("Helvetica", 12), widthIn("Helvetica", 24));
    EXPECT_LT(widthIn("Helvetica", 12), widthIn("Helvetica-Bold", 12));
}

// A native ad has the same size whatever paints it.
TEST_F(TextLayoutTest, MeasuresTheSameOnEveryBackend) {
    struct Case {
        const char* text;
        Size title;
        Size description;
    };
    for (const auto& [text, title, description] :
         {Case{"Harbour Coffee", {95, 18}, {82.5, 17}},
          Case{"Roasted at dawn, at your door by noon: coffee from the harbour.",
               {162, 54},
               {176.5, 34}},
          Case{"Кофе из гавани — каждое утро", {167, 36}, {174, 17}},
          Case{"港のそばで焙煎したコーヒーを毎朝お届けします。", {169, 36}, {168, 34}},
          Case{"Half עברית, half English: 50 % off", {169, 36}, {176.5, 17}},
          Case{"fi ffl office Ⅷ № €19.99", {149.5, 18}, {126.5, 17}}}) {
        const auto expectNear = [text = text](Size size, Size expected) {
            EXPECT_NEAR(size.width, expected.width, 0.5) << text;
            EXPECT_EQ(size.height, expected.height) << text;
        };
        const auto measureIn = [text = text](const char* font, double size) {
            return TextLayout(text, Font::named(font, size).value(), 178).size();
        };
        expectNear(measureIn("Nimbus Sans-Bold", 13), title);
        expectNear(measureIn("Nimbus Sans", 12), description);
    }
}

TEST_F(TextLayoutTest, IsPreparedAfterTheFirstText) {
    TextLayout::prepare();
    measure("Coffee", kWide);
    EXPECT_TRUE(TextLayout::prepare());
}

TEST_F(TextLayoutTest, KnowsTheWidthsInWhichItsLinesStay) {
    const TextLayout fromTheLeft("Roasted at dawn, at your door by noon", font_, 100);
    const double fitted = fromTheLeft.size().width;
    EXPECT_LT(fitted, 100);
    for (const double width : {fitted, (fitted + 100) / 2, 100.0})
        EXPECT_TRUE(fromTheLeft.holdsIn(width)) << width;
    for (const double width : {fitted - 1, 101.0})
        EXPECT_FALSE(fromTheLeft.holdsIn(width)) << width;

    const TextLayout fromTheRight("קפה טרי מהנמל בכל בוקר", font_, 100);
    EXPECT_TRUE(fromTheRight.holdsIn(100));
    EXPECT_FALSE(fromTheRight.holdsIn(99));
}

}  // namespace
