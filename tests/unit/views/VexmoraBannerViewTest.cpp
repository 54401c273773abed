// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraBannerView.h"

#include <thread>

#include "tests/PlainPicture.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using platform::Rect;
using platform::Size;
using platform::FakeMainQueue::drain;
using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::answerWithoutBody;
using platform::FakeUrlSession::fail;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class VexmoraBannerViewTest : public AdViewTest {
 protected:
    VexmoraBannerViewTest() { view_->setDelegate(host()); }

    /// Requests the ad of a container.
    void ask(const std::string& placement) { view_->setContainerId(placement); }

    static std::string placementUrl(const std::string& placement) {
        return adUrl(placement, "77,83,84");
    }

    /// Answers the request for a container with an ad that has this picture.
    static void serveAd(const std::string& placement, std::string_view picture) {
        serve(placementUrl(placement), "[" + bannerAd(picture) + "]");
    }

    static void servePicture(const std::string& picture, unsigned width, unsigned height) {
        serve("https://cdn.test/" + picture, plainPicture(width, height));
    }

    /// Runs a request until its ad is drawn.
    void showAd() {
        ask("home");
        serveAd("home", "a");
        servePicture("a", 320, 50);
    }

    /// An object whose destruction is logged.
    std::shared_ptr<void> witness(const char* end) {
        return {nullptr, [this, end](void*) { hear(end); }};
    }

    std::shared_ptr<VexmoraDelegate> mortalHost(const Reaction& reaction) {
        auto delegate = host(reaction);
        delegate->willShowScreen = [held = witness("host dies")](VexmoraView&) {};
        return delegate;
    }

    bool tapView() { return view_->tap({5, 5}); }

    /// An event after an ad is shown, and the operations by which the host hears of it.
    struct Occasion {
        std::function<void()> arise;
        std::vector<std::string> heard;
        std::vector<std::string> heardByAHostThatStays = {};
    };

    std::vector<Occasion> occasions() {
        const auto failRequest = [this] {
            ask("home");
            fail(placementUrl("home"));
        };
        const auto serveNoAd = [this] {
            ask("home");
            serve(placementUrl("home"), "[]");
        };
        return {{failRequest, {"background: didHaveError 3"}},
                {serveNoAd, {"didHaveError 2"}, {"didHaveError 5"}},
                {[this] { showAd(); }, {"didReceiveAd"}},
                {[this] { tapView(); }, {"willLeaveApplication", "opens https://shop.test/a"}}};
    }

    std::shared_ptr<VexmoraBannerView> view_ =
        VexmoraBannerView::create(Rect{{10, 20}, {320, 100}});
};

TEST_F(VexmoraBannerViewTest, TakesTheSizeOfItsPictureAtItsOriginBeforeTheDelegateIsCalled) {
    EXPECT_FALSE(tapView());
    drain();
    EXPECT_THAT(requests(), IsEmpty());

    Rect frameThen;
    view_->setDelegate(host([&] { frameThen = view_->frame(); }));
    ask("home");
    EXPECT_EQ(view_->containerId(), "home");
    serveAd("home", "a");
    EXPECT_TRUE(view_->subviews().empty());
    EXPECT_THAT(heard(), IsEmpty());

    servePicture("a", 320, 50);
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));
    EXPECT_EQ(frameThen, (Rect{{10, 20}, {320, 50}}));
    ASSERT_EQ(view_->subviews().size(), 1U);
    EXPECT_EQ(view_->subviews()[0]->frame(), (Rect{{0, 0}, {320, 50}}));
    EXPECT_THAT(requests(), ElementsAre(placementUrl("home"), "https://cdn.test/a"));
    EXPECT_THAT(platform::FakeUrlSession::lowPriorityRequests(), ElementsAre("https://cdn.test/a"));
}

TEST_F(VexmoraBannerViewTest, ReportsEveryFailureButThatOfItsPictureAndCanRequestAgain) {
    ask("home");
    fail(placementUrl("home"), {{{"NSLocalizedDescription", std::string("no such host")}}});
    ask("home");
    fail(placementUrl("home"));
    drain();
    EXPECT_THAT(heard(), ElementsAre("background: didHaveError 3: no such host",
                                     "background: didHaveError 3"));
    for (const auto* unreadable : {"", "<html></html>", "7"}) {
        ask("home");
        serve(placementUrl("home"), unreadable);
        EXPECT_THAT(heard(),
                    ElementsAre("didHaveError 2: The data is not valid JSON.", "didHaveError 5"))
            << unreadable;
    }
    ask("home");
    serve(placementUrl("home"), "[]");
    EXPECT_THAT(heard(), ElementsAre("didHaveError 2", "didHaveError 5"));
    EXPECT_EQ(view_->ad(), nullptr);

    ask("home");
    serveAd("home", "b");
    fail("https://cdn.test/b");
    drain();
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_EQ(view_->frame(), (Rect{{10, 20}, {320, 100}}));
    showAd();
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));
}

TEST_F(VexmoraBannerViewTest, KeepsTheFirstAdOfTheLatestResponseAndLoadsThePicturesOfAll) {
    ask("home");
    ask("home");
    ask("more");
    EXPECT_THAT(requests(),
                ElementsAre(placementUrl("home"), placementUrl("home"), placementUrl("more")));
    serveAd("more", "b");
    answer(placementUrl("home"), "[" + bannerAd("a") + "," + bannerAd("c", 14) + "]");
    EXPECT_EQ(view_->ad()->bannerUrl(), url("https://cdn.test/b"));
    drain();
    serve(placementUrl("home"), "[]");
    EXPECT_EQ(view_->ad()->bannerUrl(), url("https://cdn.test/a"));
    const auto all = requests();
    EXPECT_THAT(std::vector(all.begin() + 3, all.end()),
                ElementsAre("https://cdn.test/b", "https://cdn.test/a", "https://cdn.test/c"));
}

TEST_F(VexmoraBannerViewTest, DrawsTheAdThatItHoldsInFrontOfFormerOnesAndOpensItsAddress) {
    showAd();
    ask("more");
    serveAd("more", "b");
    servePicture("b", 468, 60);
    ASSERT_EQ(view_->subviews().size(), 2U);
    EXPECT_EQ(view_->subviews()[1]->frame().size, (Size{468, 60}));
    EXPECT_EQ(view_->frame(), (Rect{{10, 20}, {468, 60}}));

    ask("home");
    serveAd("home", "c");
    ask("more");
    serveAd("more", "d");
    servePicture("d", 320, 60);
    servePicture("c", 300, 50);
    EXPECT_EQ(heard(), std::vector<std::string>(4, "didReceiveAd"));
    EXPECT_EQ(view_->frame().size, (Size{320, 60}));
    EXPECT_TRUE(tapView());
    EXPECT_THAT(heard(), ElementsAre("willLeaveApplication", "opens https://shop.test/d"));
}

TEST_F(VexmoraBannerViewTest, DrawsNothingWhenThePictureOfAnotherViewArrives) {
    const auto other = VexmoraBannerView::create();
    other->setContainerId("other");
    serveAd("other", "b");
    ask("home");
    serveAd("home", "a");
    servePicture("b", 468, 60);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_TRUE(view_->subviews().empty());
    EXPECT_EQ(other->subviews().size(), 1U);
}

TEST_F(VexmoraBannerViewTest, NeedsNoDelegate) {
    for (const auto& nobody :
         {std::shared_ptr<VexmoraDelegate>(), std::make_shared<VexmoraDelegate>()}) {
        view_->setDelegate(nobody);
        showAd();
        for (const auto& occasion : occasions())
            occasion.arise();
        EXPECT_THAT(heard(), ElementsAre("opens https://shop.test/a"));
    }
}

TEST_F(VexmoraBannerViewTest, LetsTheHostClearDelegateAndAdInsideEveryOperation) {
    for (const auto& occasion : occasions()) {
        view_->setDelegate(nullptr);
        showAd();
        view_->setDelegate(host([this] {
            view_->setDelegate(nullptr);
            view_->setAd(nullptr);
        }));
        occasion.arise();
        EXPECT_EQ(heard(), occasion.heard);
    }
}

TEST_F(VexmoraBannerViewTest, MayBeReleasedInsideEveryOperation) {
    for (const auto& [arise, heardFirst, heardByAHostThatStays] : occasions()) {
        view_ = VexmoraBannerView::create();
        showAd();
        view_->setDelegate(host([this] { view_.reset(); }));
        arise();
        auto expected = heardFirst;
        expected.insert(expected.end(), heardByAHostThatStays.begin(), heardByAHostThatStays.end());
        EXPECT_EQ(heard(), expected);
        EXPECT_FALSE(view_);
    }
}

TEST_F(VexmoraBannerViewTest, IsDestroyedOnTheMainThreadLikeItsDelegateWhoeverHeldItLast) {
    view_->setDelegate(mortalHost([this] { view_->setDelegate(nullptr); }));
    ask("home");
    fail(placementUrl("home"));
    EXPECT_THAT(heard(), ElementsAre("background: didHaveError 3"));
    drain();
    EXPECT_THAT(heard(), ElementsAre("host dies"));

    view_->setDelegate(mortalHost([this] { view_.reset(); }));
    view_->setDisplayCallback([held = witness("view dies")] {});
    ask("home");
    fail(placementUrl("home"));
    EXPECT_THAT(heard(), ElementsAre("background: didHaveError 3"));
    drain();
    EXPECT_THAT(heard(), UnorderedElementsAre("view dies", "host dies"));
}

TEST_F(VexmoraBannerViewTest, LetsTheDelegateBeReplacedWhileARequestFails) {
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        ask("home");
        std::thread network([] { fail(placementUrl("home")); });
        view_->setDelegate(host());
        network.join();
    }
    EXPECT_EQ(heard(), std::vector<std::string>(kRounds, "background: didHaveError 3"));
}

using VexmoraBannerViewDeathTest = VexmoraBannerViewTest;

TEST_F(VexmoraBannerViewDeathTest, StopsAtRecordsThatMakeNoAdAndAtATapWithoutAnAd) {
    EXPECT_DEATH(view_->perform("handleTap:", nullptr), kFoundNil);
    ask("home");
    EXPECT_DEATH(serve(placementUrl("home"), "[" + bannerAd("a") + ",{}]"), kFoundNil);
    serveAd("home", "a");
    EXPECT_DEATH(serve("https://cdn.test/a", "<html>not found</html>"), kFoundNil);
    ask("home");
    answerWithoutBody(placementUrl("home"));
    EXPECT_DEATH(drain(), kFoundNil);
}

}  // namespace
}  // namespace VexmoraSDK
