// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/AdSlot.h"

#include <thread>

#include "VexmoraSDK/presenting/Presentation.h"
#include "tests/PlainPicture.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

using namespace std::chrono_literals;
using platform::FakeMainQueue::drain;
using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::fail;
using testing::ElementsAre;
using testing::IsEmpty;

const char kBanner[] = "https://ads.test/?container=home&types=77";
const char kScreen[] = "https://ads.test/?container=home&types=14";
const char kNative[] = "https://ads.test/?container=home&types=1";

/// A host that logs what it hears and calls `wake` when it is to, by a clock of its own.
class AdSlotTest : public SdkTest {
 protected:
    AdSlotTest() { renew(); }

    void renew() {
        platform::FakeUrlSession::reset();
        slot_ = std::make_unique<AdSlot>(host());
        slot_->setClock([this] { return AdSlot::Time(now_); });
        heard();
    }

    AdSlot::Delegate host() {
        const auto on = [this](const char* operation) {
            return [this, operation](VexmoraView&) { hears(operation); };
        };
        AdSlot::Delegate delegate;
        delegate.didReceiveAd = on("didReceiveAd");
        delegate.willDismissScreen = on("willDismissScreen");
        delegate.didDismissScreen = on("didDismissScreen");
        delegate.willLeaveApplication = on("willLeaveApplication");
        delegate.didHaveError = [this](VexmoraView&, const VexmoraError& error) {
            hears("didHaveError " + std::to_string(error.code()));
        };
        delegate.stateChanged = [this] {
            static constexpr const char* kNames[] = {"empty", "loading", "ready", "failed"};
            hears(kNames[static_cast<int>(slot_->state())]);
        };
        delegate.failed = [this](const AdSlot::Failure& failure) {
            hears("failed " + std::to_string(failure.code) + ": " + failure.description);
        };
        delegate.becameViewable = [this] { hears("viewable"); };
        delegate.nextWakeChanged = [this] {
            ++wakesSet_;
            if (lastWord_ == "nextWakeChanged") lastAct_();
        };
        return delegate;
    }

    void hears(const std::string& what) {
        hear(what);
        if (what == lastWord_) lastAct_();
    }

    /// Time goes by, and the host keeps to what it was told about `wake`.
    void pass(AdSlot::Duration time) {
        const auto end = now_ + time;
        while (slot_) {
            const auto next = slot_->untilNextWake();
            if (!next || now_ + *next > end) break;
            now_ += *next;
            slot_->wake();
        }
        now_ = end;
        drain();
    }

    void ask(AdSlot::Placement placement) {
        slot_->setPlacement(std::move(placement));
        pass(0s);
    }

    static void serveBanner(const std::string& picture = "a") {
        serve(kBanner, "[" + bannerAd(picture) + "]");
        serve("https://cdn.test/" + picture, plainPicture(320, 60));
    }
    void showBanner() {
        ask(kHome);
        serveBanner();
        heard();
    }

    /// How long the slot now sleeps, at most `most`, until it asks for another ad.
    AdSlot::Duration waitForRequest(AdSlot::Duration most) {
        const auto before = requests().size();
        const auto since = now_;
        while (requests().size() == before && now_ < since + most)
            pass(1s);
        return std::chrono::floor<AdSlot::Duration>(now_ - since);
    }

    const AdSlot::Placement kHome{"home", "320x60", {}, {}};
    const AdSlot::Placement kFullScreen{"home", "300x250", {}, {}};

    AdSlot::Time::duration now_ = 1000h;
    std::unique_ptr<AdSlot> slot_;
    int wakesSet_ = 0;
    /// When this is heard, the slot is destroyed, or what a test wants is done.
    std::string lastWord_;
    std::function<void()> lastAct_ = [this] { slot_.reset(); };
};

TEST_F(AdSlotTest, RequestsTheAdOfItsPlacementAndExposesItsContents) {
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt);
    slot_->setPlacement({"home", "", VexmoraAdType::native, VexmoraViewType::banner});
    EXPECT_EQ(slot_->untilNextWake(), 0s);
    EXPECT_THAT(requests(), IsEmpty()) << "more of the placement may change";
    pass(0s);
    serve(kNative, R"([{"adTypeId":1,"clickUrl":"https://shop.test/a","bannerUrl":
        "https://cdn.test/a","title":"Title","description":"Words","displayName":"Name"}])");
    EXPECT_THAT(heard(), ElementsAre("loading"));
    EXPECT_FALSE(slot_->view() || slot_->ad());
    slot_->open();

    serve("https://cdn.test/a", plainPicture(40, 30));
    EXPECT_THAT(heard(), ElementsAre("ready", "didReceiveAd"));
    const auto ad = slot_->ad().value();
    EXPECT_EQ(ad.title + ad.description + ad.displayName, "TitleWordsName");
    EXPECT_EQ(ad.picture->size(), (platform::Size{40, 30}));
    slot_->open();
    EXPECT_THAT(heard(), ElementsAre("willLeaveApplication", "opens " + ad.clickUrl));

    slot_->setPlacement({"home", "320x61", {}, {}});
    EXPECT_THAT(heard(), ElementsAre("empty"));
    EXPECT_FALSE(slot_->view() || slot_->ad() || slot_->age() || slot_->untilNextWake());
    EXPECT_EQ(kHome.reservedSize(), (platform::Size{320, 60}));
    EXPECT_EQ(kFullScreen.reservedSize(), platform::Size());
}

TEST_F(AdSlotTest, TellsOfEachErrorOnTheMainThreadAndOfEachFailureOnce) {
    ask(kHome);
    serve(kBanner, "[]");
    EXPECT_THAT(heard(), ElementsAre("loading", "failed", "didHaveError 2",
                                     "failed 2: ParsingError", "didHaveError 5"));
    slot_->reload();
    pass(0s);
    EXPECT_EQ(slot_->failure(), std::nullopt);
    fail(kBanner, {{{"NSLocalizedDescription", std::string("no such host")}}});
    drain();
    EXPECT_THAT(heard(),
                ElementsAre("loading", "failed", "didHaveError 3", "failed 3: no such host"));
    EXPECT_EQ(slot_->failure()->code, 3);
    ask({"home", "", VexmoraAdType::slideshow, {}});
    EXPECT_THAT(heard(),
                ElementsAre("loading", "failed", "didHaveError 4", "failed 4: InvalidAdTypeError"));
    const VexmoraError archived(VexmoraErrorCodes{99}, std::nullopt);
    EXPECT_EQ(AdSlot::Failure::of(archived).description, "UnknownError");
}

TEST_F(AdSlotTest, TellsNothingMoreOfARequestOnceItsHostHasAskedForSomethingElse) {
    lastAct_ = [this] { slot_->setPlacement(kFullScreen); };
    for (const char* word : {"failed", "didHaveError 3"}) {
        renew();
        lastWord_ = word;
        ask(kHome);
        fail(kBanner);
        drain();
        const auto words = heard();
        EXPECT_EQ(words.at(words.size() - 2), word);
    }
    renew();
    lastWord_ = "failed";
    ask(kHome);
    pass(60s);
    EXPECT_THAT(heard(), ElementsAre("loading", "failed", "loading"));
}

TEST_F(AdSlotTest, KeepsTheAdOnShowUntilTheNextIsDrawn) {
    showBanner();
    const auto first = slot_->view();
    slot_->reload();
    slot_->reload();
    pass(0s);
    fail(kBanner);
    drain();
    EXPECT_THAT(heard(), ElementsAre("didHaveError 3", "failed 3: RequestError"));
    EXPECT_EQ(slot_->state(), AdSlot::State::ready);

    slot_->reload();
    pass(0s);
    slot_->reload();
    pass(0s);
    serveBanner("given-up");
    EXPECT_EQ(slot_->view(), first);
    EXPECT_EQ(slot_->ad()->clickUrl, "https://shop.test/a");
    pass(5s);
    serveBanner("b");
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));
    EXPECT_NE(slot_->view(), first);
    EXPECT_EQ(slot_->ad()->clickUrl, "https://shop.test/b");
    EXPECT_EQ(slot_->age(), 0s);

    slot_->reload();
    pass(0s);
    slot_->setPlacement({"more", "320x60", {}, {}});
    serveBanner("late");
    EXPECT_THAT(heard(), ElementsAre("loading"));
    EXPECT_EQ(slot_->view(), nullptr);
}

TEST_F(AdSlotTest, FailsWithoutAPictureInTimeAndDropsTheAdThatIsLate) {
    ask(kHome);
    serve(kBanner, "[" + bannerAd("a") + "]");
    pass(59s);
    EXPECT_THAT(heard(), ElementsAre("loading"));
    pass(1s);
    serve("https://cdn.test/a", plainPicture(320, 60));
    EXPECT_THAT(heard(), ElementsAre("failed", "failed 0: TimedOut"));

    slot_->setTimeout(0s);
    slot_->reload();
    pass(24h);
    serveBanner();
    EXPECT_THAT(heard(), ElementsAre("loading", "ready", "didReceiveAd"));

    slot_->setTimeout(AdSlot::Duration::max());
    slot_->setExpiresAfter(AdSlot::Duration::max());
    slot_->setRefreshInterval(AdSlot::Duration::max());
    slot_->setVisibleFraction(1);
    slot_->reload();
    pass(1s);
    EXPECT_EQ(slot_->untilNextWake(), 24h) << "however far off it is";
}

TEST_F(AdSlotTest, RefreshesInVisibleAndActiveTimeAndMoreSeldomAfterFailures) {
    slot_->setRefreshInterval(1s);
    EXPECT_EQ(slot_->refreshInterval(), 10s);
    slot_->setRefreshInterval(60s);
    showBanner();
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt) << "nobody sees it";
    slot_->setVisibleFraction(0.1);
    pass(40s);
    slot_->setActive(false);
    pass(10min);
    slot_->setActive(true);
    EXPECT_EQ(waitForRequest(1h), 20s);
    serveBanner("b");
    EXPECT_EQ(waitForRequest(1h), 60s);
    for (const auto wait : {120s, 240s, 300s, 300s}) {
        fail(kBanner);
        drain();
        EXPECT_EQ(waitForRequest(1h), wait);
    }
    slot_->setTimeout(0s);
    EXPECT_EQ(waitForRequest(1h), 300s) << "what nobody tells of is not waited for for ever";
    serveBanner("given-up");
    serveBanner("c");
    EXPECT_EQ(waitForRequest(1h), 60s);

    renew();
    slot_->setRefreshInterval(60s);
    slot_->setVisibleFraction(1);
    ask({"home", "", VexmoraAdType::slideshow, {}});
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt);
    ask(kFullScreen);
    fail(kScreen);
    drain();
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt);
}

TEST_F(AdSlotTest, IsViewableAfterASecondWithoutABreakOnceForEachAd) {
    slot_->setVisibleFraction(1);
    showBanner();
    pass(999ms);
    slot_->setVisibleFraction(0.49);
    slot_->setVisibleFraction(0.5);
    pass(999ms);
    slot_->setActive(false);
    slot_->setActive(true);
    pass(999ms);
    EXPECT_THAT(heard(), IsEmpty());
    pass(1ms);
    EXPECT_THAT(heard(), ElementsAre("viewable"));
    slot_->setVisibleFraction(0);
    slot_->setVisibleFraction(1);
    pass(1h);
    EXPECT_THAT(heard(), IsEmpty());

    slot_->reload();
    pass(0s);
    serveBanner("b");
    EXPECT_FALSE(slot_->isViewable());
    now_ += 1s;
    slot_->setVisibleFraction(0);
    pass(0s);
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd", "viewable")) << "a host that was busy";
    EXPECT_TRUE(slot_->isViewable());
}

TEST_F(AdSlotTest, GivesAnInterstitialItsScreenAndPresentsItForAnHour) {
    slot_->setScreenSize({360, 640});
    slot_->setVisibleFraction(1);
    ask(kFullScreen);
    serve(kScreen, "[" + bannerAd("a", 14) + "]");
    EXPECT_FALSE(slot_->isPresentable());
    serve("https://cdn.test/a", plainPicture(300, 250));
    EXPECT_THAT(heard(), ElementsAre("loading", "ready", "didReceiveAd"));
    EXPECT_EQ(slot_->view()->subviews().back()->center(), (platform::Point{180, 320}));
    slot_->open();
    pass(1h - 1s);
    EXPECT_THAT(heard(), IsEmpty()) << "it is not presented yet";
    EXPECT_TRUE(slot_->isPresentable());
    const auto presented = slot_->view();
    slot_->reload();
    pass(1s);
    EXPECT_FALSE(slot_->isPresentable());
    serve(kScreen, "[" + bannerAd("b", 14) + "]");
    serve("https://cdn.test/b", plainPicture(300, 250));
    EXPECT_TRUE(slot_->isPresentable());
    slot_->setPresented();
    EXPECT_FALSE(slot_->isPresentable());
    presented->tap({360 - 12 - 18, 12 + 18});
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd", "willDismissScreen"))
        << "the next may be asked for while the former is presented";
    showBanner();
    EXPECT_FALSE(slot_->isPresentable());
}

TEST_F(AdSlotTest, LetsItsHostSleepWhileNothingChanges) {
    ask(kHome);
    EXPECT_EQ(slot_->untilNextWake(), 60s) << "the timeout";
    serveBanner();
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt);
    slot_->setVisibleFraction(0.6);
    EXPECT_EQ(slot_->untilNextWake(), 1s);
    wakesSet_ = 0;
    slot_->setVisibleFraction(0.7);
    slot_->setActive(true);
    EXPECT_EQ(wakesSet_, 0);
    slot_->wake();
    EXPECT_EQ(wakesSet_, 1) << "too early";
    pass(1s);
    EXPECT_EQ(wakesSet_, 1);
    EXPECT_EQ(slot_->untilNextWake(), std::nullopt);
}

TEST_F(AdSlotTest, MayBeDestroyedInsideAnyCallback) {
    const auto live = [this] {
        slot_->setTimeout(30s);
        slot_->setScreenSize({360, 640});
        slot_->setVisibleFraction(1);
        slot_->setPlacement(kHome);
        if (slot_) pass(0s);
        if (!slot_) return;
        serveBanner();
        if (slot_) pass(1s);
        if (slot_) slot_->open();
        if (slot_) slot_->reload();
        if (slot_) pass(0s);
        if (!slot_) return;
        serve(kBanner, "[]");
        if (slot_) slot_->reload();
        if (slot_) pass(30s);
        if (!slot_) return;
        slot_->setPlacement(kFullScreen);
        if (slot_) pass(0s);
        if (!slot_) return;
        serve(kScreen, "[" + bannerAd("a", 14) + "]");
        serve("https://cdn.test/a", plainPicture(300, 250));
        if (!slot_) return;
        Presentation presentation([&](bool) { presentation.end(); });
        presentation.begin(slot_->view());
        slot_->view()->tap({360 - 12 - 18, 12 + 18});
        drain();
        if (slot_) slot_->setPlacement({});
    };
    live();
    auto words = heard();
    std::erase(words, "opens https://shop.test/a");
    EXPECT_EQ(words.size(), 15U);
    words.emplace_back("nextWakeChanged");
    for (const auto& word : words) {
        renew();
        lastWord_ = word;
        live();
        EXPECT_FALSE(slot_) << word;
        auto last = heard();
        std::erase(last, "opens https://shop.test/a");
        if (word != "nextWakeChanged") {
            EXPECT_EQ(last.back(), word);
        }
    }
}

TEST_F(AdSlotTest, MayBeDestroyedOrAskedForAnotherAdWhileARequestEndsOnAnotherThread) {
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        renew();
        ask(kHome);
        std::thread network([round] {
            if (round % 4 < 2)
                fail(kBanner);
            else
                answer(kBanner, "[]");
        });
        if (round % 2 == 0)
            slot_.reset();
        else
            slot_->setPlacement(kFullScreen);
        network.join();
        drain();
        EXPECT_THAT(heard(), ElementsAre("loading")) << round;
    }
}

}  // namespace
}  // namespace VexmoraSDK
