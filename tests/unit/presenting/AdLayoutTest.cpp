// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/presenting/InterstitialLayout.h"
#include "VexmoraSDK/presenting/NativeTexts.h"
#include "VexmoraSDK/presenting/TapTarget.h"
#include "tests/PlainPicture.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

using platform::Color;
using platform::Point;
using platform::Rect;
using platform::Size;
using testing::ElementsAre;

class AdLayoutTest : public SdkTest {
 protected:
    /// A view with its ad drawn, whose picture has this size.
    std::shared_ptr<VexmoraView> show(VexmoraAdType type, unsigned width, unsigned height) {
        slot_.setScreenSize({360, 640});
        slot_.setPlacement({"home", "", type, {}});
        slot_.wake();
        serve("https://ads.test/?container=home&types=" + std::to_string(rawValue(type)),
              R"([{"adTypeId":)" + std::to_string(rawValue(type)) +
                  R"(,"clickUrl":"https://shop.test/","bannerUrl":"https://cdn.test/a","title":
                  "Title","description":"","displayName":"Name"}])");
        serve("https://cdn.test/a", plainPicture(width, height));
        return slot_.view();
    }

    AdSlot slot_{{}};
};

TEST_F(AdLayoutTest, FitsAnAdIntoItsPlaceWithItsProportions) {
    const auto sharp = AdPosition::of(FillMode::fit, {640, 120}, {320, 60});
    EXPECT_EQ(sharp.scale, 0.5);
    EXPECT_EQ(sharp.toAd({160, 30}), (Point{320, 60}));
    const auto narrow = AdPosition::of(FillMode::fit, {320, 60}, {160, 60});
    EXPECT_EQ(narrow.origin, (Point{0, 15}));
    EXPECT_EQ(narrow.toAd({80, 30}), (Point{160, 30}));
    EXPECT_EQ(AdPosition::of(FillMode::asIs, {640, 120}, {320, 60}).scale, 1);
    EXPECT_EQ(AdPosition::of(FillMode::fit, {}, {320, 60}).toAd({5, 5}), (Point{5, 5}));

    EXPECT_EQ(preferredSize(FillMode::asIs, {}, {320, 60}), (Size{320, 60}));
    EXPECT_EQ(preferredSize(FillMode::asIs, {320, 50}, {320, 60}), (Size{320, 50}));
    EXPECT_EQ(preferredSize(FillMode::fit, {640, 120}, {320, 60}), (Size{320, 60}));
    EXPECT_EQ(preferredSize(FillMode::fit, {320, 118}, {}), (Size{320, 118}));
}

TEST_F(AdLayoutTest, CentresTheInterstitialAgainAndLetsNoTapThroughToItsPicture) {
    const auto view = show(VexmoraAdType::leaderboard, 1456, 180);
    view->setFrame({{0, 0}, {640, 360}});
    const auto picture = std::static_pointer_cast<platform::ImageView>(view->subviews().back());
    layOutInterstitial(*view, FillMode::asIs);
    EXPECT_EQ(picture->frame(), (Rect{{-408, 90}, {1456, 180}}));
    layOutInterstitial(*view, FillMode::fit);
    EXPECT_EQ(picture->imageRect().size.width, 640);
    EXPECT_NEAR(picture->center().y, 180, 0.5) << "to the next whole pixel";
    view->setFrame({{0, 0}, {1000, 600}});
    layOutInterstitial(*view, FillMode::fit);
    EXPECT_EQ(picture->frame(), (Rect{{136, 255}, {728, 90}}));
    view->setFrame({{0, 0}, {999, 600}});
    layOutInterstitial(*view, FillMode::fit, 2);
    EXPECT_EQ(picture->frame().origin, (Point{135.5, 255}));
    layOutInterstitial(*view, FillMode::fit);
    EXPECT_EQ(picture->frame().origin, (Point{136, 255}));

    EXPECT_TRUE(isDrawn(*view));
    EXPECT_FALSE(takesTap(*view, {500, 300}));
    EXPECT_TRUE(takesTap(*view, {1000 - 12 - 18, 12 + 18}));
    EXPECT_FALSE(takesTap(*view, {-1, 0}));
    EXPECT_TRUE(takesTap(*show(VexmoraAdType::banner, 320, 60), {5, 5}));
}

TEST_F(AdLayoutTest, ColoursAndReadsTheTextsOfANativeAd) {
    const auto view = show(VexmoraAdType::native, 40, 30);
    const auto colors = [&view] {
        std::vector<Color> found;
        for (const auto& subview : view->subviews())
            if (auto* text = dynamic_cast<platform::TextView*>(subview.get()))
                found.push_back(text->textColor());
        return found;
    };
    const Color white{1, 1, 1, 1};
    setTextColors(*view, {white, {}});
    EXPECT_THAT(colors(), ElementsAre(white, white, Color::gray()));
    setTextColors(*view, {{}, white});
    EXPECT_THAT(colors(), ElementsAre(Color::black(), Color::black(), white));
    EXPECT_EQ(accessibleName("Advertisement", *view), "Advertisement, Title, Name");
}

}  // namespace
}  // namespace VexmoraSDK
