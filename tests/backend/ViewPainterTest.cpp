// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "tests/AppTest.h"
#include "tests/backend/Backend.h"

using VexmoraSDK::AppTest;
using VexmoraSDK::Box;
using VexmoraSDK::Painting;
using VexmoraSDK::Pixel;
using namespace VexmoraSDK::platform;

namespace {

constexpr Color kRed = {1, 0, 0, 1};
constexpr Color kGreen = {0, 1, 0, 1};
constexpr Color kBlue = {0, 0, 1, 1};
constexpr Pixel kWhitePixel = 0xFFFFFFFF;
constexpr Pixel kRedPixel = 0xFFFF0000;
constexpr Pixel kGreenPixel = 0xFF00FF00;
constexpr Pixel kBluePixel = 0xFF0000FF;

int red(Pixel pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}
int green(Pixel pixel) {
    return static_cast<int>(pixel >> 8 & 0xFF);
}
int blue(Pixel pixel) {
    return static_cast<int>(pixel & 0xFF);
}

/// A picture whose columns have the colours that `color` returns.
template <class ColorOf>
std::shared_ptr<const Image> picture(int width, int height, ColorOf color) {
    auto pixels = std::make_unique<Pixel[]>(static_cast<std::size_t>(width * height));
    for (int i = 0; i < width * height; ++i)
        pixels[static_cast<std::size_t>(i)] = color(i % width);
    return std::make_shared<const Image>(width, height, std::move(pixels), true);
}

class ViewPainterTest : public AppTest {
 protected:
    std::shared_ptr<View> addView(Rect frame, Color color) {
        auto view = View::create(frame);
        view->setBackgroundColor(color);
        root_->addSubview(view);
        return view;
    }

    std::shared_ptr<TextView> addText(Rect frame, std::string text) {
        auto view = TextView::create(frame);
        view->setText(std::move(text));
        root_->addSubview(view);
        return view;
    }

    Painting painted(int scale = 1) const { return VexmoraSDK::painted(*root_, 200, 100, scale); }
    Pixel colorAt(int x, int y) const { return painted().at(x, y); }
    Box ink() const { return painted().ink(); }

    const std::shared_ptr<View> root_ = View::create({{30, 40}, {200, 100}});
};

TEST_F(ViewPainterTest, PaintsSubviewsOverTheirSuperviewAtTheirFrames) {
    const auto below = addView({{10, 10}, {50, 50}}, kRed);
    addView({{40, 40}, {50, 50}}, kBlue);
    const auto within = View::create({{5, 5}, {10, 10}});
    within->setBackgroundColor(kGreen);
    below->addSubview(within);

    EXPECT_EQ(ink(), (Box{10, 10, 90, 90}));
    EXPECT_EQ(colorAt(12, 12), kRedPixel);
    EXPECT_EQ(colorAt(15, 15), kGreenPixel);
    EXPECT_EQ(colorAt(50, 50), kBluePixel);

    below->setZPosition(1);
    EXPECT_EQ(colorAt(50, 50), kRedPixel);
    below->setHidden(true);
    EXPECT_EQ(ink(), (Box{40, 40, 90, 90}));
    root_->setHidden(true);
    EXPECT_EQ(ink(), Box());
}

TEST_F(ViewPainterTest, BlendsTranslucentColorsAndRoundsCorners) {
    const auto view = addView({{0, 0}, {40, 40}}, {1, 0, 0, 0.5});
    EXPECT_NEAR(green(colorAt(20, 20)), 128, 2);
    view->setCornerRadius(20);
    EXPECT_EQ(colorAt(2, 2), kWhitePixel);
    EXPECT_NEAR(green(colorAt(20, 20)), 128, 2);
}

TEST_F(ViewPainterTest, PaintsPicturesInTheirContentMode) {
    const auto view = ImageView::create(picture(20, 10, [](int) { return kRedPixel; }));
    root_->addSubview(view);
    EXPECT_EQ(ink(), (Box{0, 0, 20, 10}));

    view->setFrame({{10, 20}, {80, 60}});
    EXPECT_EQ(ink(), (Box{10, 20, 90, 80}));
    view->setContentMode(ContentMode::scaleAspectFit);
    EXPECT_EQ(ink(), (Box{10, 30, 90, 70}));
    view->setContentMode(ContentMode::center);
    EXPECT_EQ(ink(), (Box{40, 45, 60, 55}));
    view->setFrame({{10, 20}, {4, 4}});
    EXPECT_EQ(ink(), (Box{2, 17, 22, 27})) << "not clipped";
    view->setContentMode(ContentMode::scaleAspectFit);
    view->setFrame({{0, 0}, {80, 20}});
    EXPECT_EQ(ink(), (Box{20, 0, 60, 20}));
}

TEST_F(ViewPainterTest, PaintsPicturesOfAnyWidthAndWhatComesBehindThem) {
    const auto view = ImageView::create(
        picture(60'000, 1, [](int x) { return x < 30'000 ? kRedPixel : kBluePixel; }));
    view->setFrame({{0, 0}, {100, 20}});
    root_->addSubview(view);
    addView({{0, 30}, {10, 10}}, kRed);
    EXPECT_EQ(colorAt(10, 10), kRedPixel);
    EXPECT_EQ(colorAt(90, 10), kBluePixel);
    EXPECT_EQ(colorAt(5, 35), kRedPixel);
}

TEST_F(ViewPainterTest, AveragesThePixelsOfReducedPictures) {
    // The first of every eight columns is blue, the others are green.
    const auto view = ImageView::create(
        picture(800, 400, [](int x) { return x % 8 == 0 ? kBluePixel : kGreenPixel; }));
    view->setFrame({{0, 0}, {100, 50}});
    root_->addSubview(view);
    EXPECT_NEAR(blue(colorAt(50, 25)), 255 / 8, 8);
    EXPECT_NEAR(blue(colorAt(51, 25)), 255 / 8, 8);
    EXPECT_NEAR(blue(painted(2).at(100, 50)), 255 / 4, 8);
    EXPECT_NEAR(blue(colorAt(50, 25)), 255 / 8, 8);
}

TEST_F(ViewPainterTest, PaintsTextWhereItIsMeasured) {
    const auto view = addText({{20, 10}, {100, 80}}, "Coffee\nfrom the harbour");
    view->setTextColor(kRed);
    view->sizeToFit();
    const auto [width, height] = view->frame().size;
    const Box found = ink();
    // 5 points of padding at the sides, 8 of inset above and below.
    const Box text = {24, 18, 16 + static_cast<int>(width), 2 + static_cast<int>(height)};
    EXPECT_TRUE(text.contains(found));
    EXPECT_GT(found.height(), 20) << "two lines";
    EXPECT_GT(found.width(), width - 20) << "as wide as measured";
    const Painting large = painted(3);
    for (const Pixel pixel : large.pixels) {
        EXPECT_EQ(red(pixel), 255);
        EXPECT_EQ(green(pixel), blue(pixel));
    }
    EXPECT_GT(std::ranges::count(large.pixels, kRedPixel), 20) << "the stems of the letters";

    view->setFrame({{20, 10}, {60, 15}});
    EXPECT_TRUE((Box{20, 10, 80, 25}).contains(ink())) << "clipped";
    EXPECT_NE(ink(), Box());
}

TEST_F(ViewPainterTest, BeginsRightToLeftScriptsAtTheRight) {
    const auto view = addText({{0, 0}, {200, 40}}, "Kahvi");
    EXPECT_LT(ink().right, 100);
    view->setText("קפה");
    EXPECT_GT(ink().left, 100);
}

TEST_F(ViewPainterTest, PaintsTheSameLinesAtAnyScale) {
    addText({{0, 0}, {120, 100}}, "Roasted at dawn, at your door by noon, from the harbour");
    const Box once = ink();
    for (const int scale : {2, 3}) {
        const Box scaled = painted(scale).ink();
        EXPECT_NEAR(scaled.width(), once.width() * scale, 3 * scale);
        EXPECT_NEAR(scaled.height(), once.height() * scale, 3 * scale);
    }
}

TEST_F(ViewPainterTest, PutsTheTitleOfAButtonInItsMiddle) {
    const auto button = Button::create({{50, 20}, {60, 40}});
    button->setTitle("×");
    root_->addSubview(button);
    EXPECT_NEAR(ink().center().x, 80, 1);
    EXPECT_NEAR(ink().center().y, 40, 5);
    button->setTitle("סגור");
    EXPECT_NEAR(ink().center().x, 80, 1);
}

// A layout outlives the application that it was made under.
TEST(ViewPainterDeathTest, PaintsATextUnderTheNextApplication) {
    const auto test = [] {
        auto app = std::make_unique<VexmoraSDK::App>();
        const auto text = TextView::create({{0, 0}, {200, 100}});
        text->setText("Coffee");
        const auto before = VexmoraSDK::painted(*text, 200, 100, 1);
        app.reset();
        app = std::make_unique<VexmoraSDK::App>();
        const auto after = VexmoraSDK::painted(*text, 200, 100, 1);
        app.reset();
        std::exit(after.pixels == before.pixels && before.ink().width() > 0 ? 0 : 1);
    };
    EXPECT_EXIT(test(), testing::ExitedWithCode(0), "");
}

}  // namespace
