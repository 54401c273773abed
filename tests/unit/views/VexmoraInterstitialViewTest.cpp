// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/Window.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "tests/PlainPicture.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using platform::ContentMode;
using platform::ImageView;
using platform::Point;
using testing::ElementsAre;

const char kAds[] = "https://ads.test/?container=home&types=14";

/// A host's screen, whose animation ends when the test says so.
class Screen : public platform::ViewController {
 public:
    void dismiss(bool animated, std::function<void()> completion) override {
        EXPECT_TRUE(animated);
        finishAnimation = std::move(completion);
    }

    std::function<void()> finishAnimation;
};

class VexmoraInterstitialViewTest : public AdViewTest {
 protected:
    VexmoraInterstitialViewTest() {
        view_->setFrame({{0, 100}, {320, 480}});
        window_->setRootViewController(screen_);
    }

    void showAd() {
        serve(kAds, "[" + bannerAd("a", 14) + "]");
        serve("https://cdn.test/a", plainPicture(300, 250));
    }

    void tapClose() { EXPECT_TRUE(view_->tap({320 - 12 - 18, 12 + 18})); }

    std::shared_ptr<VexmoraInterstitialView> view_ =
        std::dynamic_pointer_cast<VexmoraInterstitialView>(
            VexmoraViewFactory::createView("home", VexmoraAdType::mediumRectangle, host()));
    std::shared_ptr<Screen> screen_ = std::make_shared<Screen>();
    std::shared_ptr<platform::Window> window_ = std::make_shared<platform::Window>();
};

TEST_F(VexmoraInterstitialViewTest, AsksForBannersWhenItIsMadeByItself) {
    const auto alone = VexmoraInterstitialView::create();
    EXPECT_THAT(alone->adTypes(), ElementsAre(77, 83, 84));
    EXPECT_EQ(alone->viewType(), VexmoraViewType::interstitial);
    EXPECT_EQ(alone->closeButton(), nullptr);
}

TEST_F(VexmoraInterstitialViewTest, CentresItsPictureOnItsOwnCentreBehindTheCloseButton) {
    showAd();
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));
    const auto picture = std::dynamic_pointer_cast<ImageView>(view_->subviews().back());
    EXPECT_EQ(picture->contentMode(), ContentMode::center);
    EXPECT_EQ(picture->center(), (Point{160, 340}));
    EXPECT_EQ(view_->subviewsInPaintOrder().back(), view_->closeButton());
    EXPECT_EQ(view_->frame().size, (platform::Size{320, 480}));
}

TEST_F(VexmoraInterstitialViewTest, KeepsTheFirstOfSeveralAds) {
    serve(kAds, "[" + bannerAd("a", 14) + "," + bannerAd("b", 15) + "," + bannerAd("c", 77) + "]");
    EXPECT_THAT(requests(), ElementsAre(kAds, "https://cdn.test/a", "https://cdn.test/b",
                                        "https://cdn.test/c"));
    EXPECT_EQ(view_->ad()->adType(), VexmoraAdType::mediumRectangle);
}

TEST_F(VexmoraInterstitialViewTest, ReportsNoFillOnceForAnyResponseWithoutAnAd) {
    for (const auto* body : {"[]", "", "<html>"}) {
        serve(kAds, body);
        EXPECT_THAT(heard(), ElementsAre("didHaveError 5")) << body;
        EXPECT_EQ(view_->ad(), nullptr);
        view_->setContainerId("home");
    }
    platform::FakeUrlSession::fail(kAds);
    EXPECT_THAT(heard(), ElementsAre("background: didHaveError 3"));
}

TEST_F(VexmoraInterstitialViewTest, StopsAtRecordsThatMakeNoBanner) {
    const std::string good = bannerAd("a", 14);
    for (const auto* id : {"2", "\"letters\"", "null"}) {
        const std::string bad = R"({"adTypeId":)" + std::string(id) +
                                R"(,"clickUrl":"https://a/","bannerUrl":"https://a/"})";
        EXPECT_DEATH(serve(kAds, "[" + bad + "]"), kFoundNil) << id;
        EXPECT_DEATH(serve(kAds, "[" + good + "," + bad + "]"), kFoundNil) << id;
    }
    EXPECT_DEATH(serve(kAds, R"([{"adTypeId":1,"clickUrl":"https://a/","bannerUrl":"https://a/",
                                  "title":"","description":"","displayName":""}])"),
                 "^fatal error: could not cast value of type 'VexmoraSDK.Native' to "
                 "'VexmoraSDK.Banner'\n");
    EXPECT_DEATH(
        {
            platform::FakeUrlSession::answerWithoutBody(kAds);
            platform::FakeMainQueue::drain();
        },
        kFoundNil);
}

TEST_F(VexmoraInterstitialViewTest, TellsOfItsDismissalBeforeAndAfterTheAnimation) {
    showAd();
    heard();
    view_->setWindow(window_);
    tapClose();
    EXPECT_THAT(heard(), ElementsAre("willDismissScreen"));
    screen_->finishAnimation();
    EXPECT_THAT(heard(), ElementsAre("didDismissScreen"));

    view_->setWindow({});
    tapClose();
    EXPECT_THAT(heard(), ElementsAre("willDismissScreen"));
}

TEST_F(VexmoraInterstitialViewTest, ClosesBeforeAnAdIsThereAndOutlivesItsHostsReference) {
    view_->setWindow(window_);
    tapClose();
    view_.reset();
    heard();
    screen_->finishAnimation();
    EXPECT_THAT(heard(), ElementsAre("didDismissScreen"));
}

TEST_F(VexmoraInterstitialViewTest, StopsAtATapOnItsPictureAndAtAWindowWithoutAController) {
    showAd();
    EXPECT_DEATH(view_->tap({160, 240}),
                 "^fatal error: unrecognized selector 'handleTap:' sent to instance of "
                 "'VexmoraSDK.VexmoraInterstitialView'\n");
    window_->setRootViewController(nullptr);
    view_->setWindow(window_);
    EXPECT_DEATH(tapClose(), kFoundNil);
}

}  // namespace
}  // namespace VexmoraSDK
