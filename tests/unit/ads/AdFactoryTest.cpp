#include "VexmoraSDK/ads/AdFactory.h"

#include "tests/unit/FatalReports.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

using platform::FakeMainQueue::drain;
using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::answerWithoutBody;
using platform::FakeUrlSession::fail;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kServer = "https://ads.test/";

class AdFactoryTest : public SdkTest {
 protected:
    /// What a record needs, and more than that.
    static AdRecord record(std::string adTypeId) {
        return {{"adTypeId", std::move(adTypeId)},
                {"clickUrl", "https://shop.test/"},
                {"bannerUrl", "https://cdn.test/a.png"},
                {"imageUrl", "https://cdn.test/unused.png"},
                {"title", "Title"},
                {"description", "Text"},
                {"displayName", "Shop"}};
    }

    static AdRecord with(AdRecord record, const std::string& member, std::string value) {
        record[member] = std::move(value);
        return record;
    }

    static AdRecord without(AdRecord record, std::string_view member) {
        record.erase(record.find(member));
        return record;
    }

    void fetchBanner() {
        AdFactory::fetchAndCreateBanner(
            url(kServer),
            [this](const std::shared_ptr<Banner>& ad) { hear("ad " + ad->bannerUrl().text()); },
            hearErrors());
    }
};

TEST_F(AdFactoryTest, BuildsTheModelThatTheTypeAsksFor) {
    const auto native = AdFactory::createAd<Native>(record("1"));
    EXPECT_EQ(native->title(), "Title");
    EXPECT_EQ(native->desc(), "Text");
    EXPECT_EQ(native->displayName(), "Shop");
    EXPECT_EQ(native->clickUrl(), url("https://shop.test/"));

    const auto banner = AdFactory::createAd<Banner>(record("+14"));
    EXPECT_EQ(banner->adType(), VexmoraAdType::mediumRectangle);
    EXPECT_EQ(banner->bannerUrl(), url("https://cdn.test/a.png"));
    EXPECT_EQ(AdFactory::createAd<Banner>(record("079"))->adType(), VexmoraAdType::slideshow);
    EXPECT_EQ(requests(), std::vector<std::string>(3, "https://cdn.test/a.png"));
}

TEST_F(AdFactoryTest, DeliversTheFirstAdOnTheMainThreadAndLoadsThePicturesOfAll) {
    fetchBanner();
    EXPECT_THAT(requests(), ElementsAre(kServer));
    answer(kServer, "[" + bannerAd("a") + "," + bannerAd("b", 14) + "," + bannerAd("c", 84) + "]");
    EXPECT_THAT(heard(), IsEmpty());
    drain();
    EXPECT_THAT(heard(), ElementsAre("ad https://cdn.test/a"));
    EXPECT_THAT(requests(), ElementsAre(kServer, "https://cdn.test/a", "https://cdn.test/b",
                                        "https://cdn.test/c"));
}

TEST_F(AdFactoryTest, StartsToLoadAPictureOnlyAfterTheAdWasDelivered) {
    std::size_t requestsAtDelivery = 0;
    AdFactory::fetchAndCreateAd(
        url(kServer),
        [&](const std::shared_ptr<Native>&) { requestsAtDelivery = requests().size(); },
        hearErrors());
    serve(kServer, R"([{"adTypeId": "1", "clickUrl": "a", "bannerUrl": "b", "title": "",
                        "description": "", "displayName": ""}])");
    EXPECT_EQ(requestsAtDelivery, 1U);
    EXPECT_THAT(requests(), ElementsAre(kServer, "b"));
}

TEST_F(AdFactoryTest, ReportsAFailedRequestOnceAndInTheBackground) {
    fetchBanner();
    fail(kServer, {{{"NSLocalizedDescription", std::string("no such host")}}});
    fetchBanner();
    fail(kServer);
    drain();
    EXPECT_THAT(heard(), ElementsAre("background: error 3: no such host", "background: error 3"));
}

TEST_F(AdFactoryTest, ReportsAnUnusableAnswerTwiceOnTheMainThread) {
    for (const auto* unreadable : {"", "<html></html>", "7"}) {
        fetchBanner();
        serve(kServer, unreadable);
        EXPECT_THAT(heard(), ElementsAre("error 2: The data is not valid JSON.", "error 5"))
            << unreadable;
    }
    fetchBanner();
    serve(kServer, "[]");
    EXPECT_THAT(heard(), ElementsAre("error 2", "error 5"));
}

using AdFactoryDeathTest = AdFactoryTest;

TEST_F(AdFactoryDeathTest, StopsAtARecordThatMakesNoModel) {
    for (const auto* member : {"adTypeId", "clickUrl", "bannerUrl"})
        EXPECT_DEATH(AdFactory::createAd<Banner>(without(record("77"), member)), kFoundNil);
    for (const auto* member : {"title", "description", "displayName"})
        EXPECT_DEATH(AdFactory::createAd<Native>(without(record("1"), member)), kFoundNil);
    for (const auto* adTypeId :
         {"", "+", "78", " 77", "77 ", "77.0", "0x4d", "+-77", "18446744073709551693"}) {
        EXPECT_DEATH(AdFactory::createAd<Banner>(record(adTypeId)), kFoundNil) << adTypeId;
    }
    for (const auto* member : {"clickUrl", "bannerUrl"}) {
        EXPECT_DEATH(AdFactory::createAd<Banner>(with(record("77"), member, "no address")),
                     kFoundNil);
    }
}

TEST_F(AdFactoryDeathTest, StopsAtAModelOfTheOtherKind) {
    EXPECT_DEATH(AdFactory::createAd<Banner>(record("1")),
                 "^fatal error: could not cast value of type 'VexmoraSDK.Native' to "
                 "'VexmoraSDK.Banner'\n$");
    EXPECT_DEATH(AdFactory::createAd<Native>(record("77")),
                 "^fatal error: could not cast value of type 'VexmoraSDK.Banner' to "
                 "'VexmoraSDK.Native'\n$");
}

TEST_F(AdFactoryDeathTest, StopsAtALaterUnusableRecordToo) {
    fetchBanner();
    EXPECT_DEATH(serve(kServer, "[" + bannerAd("a") + ",{}]"), kFoundNil);
}

TEST_F(AdFactoryDeathTest, StopsOnTheMainThreadWhenAnAnswerHasNoBody) {
    fetchBanner();
    answerWithoutBody(kServer);
    EXPECT_DEATH(drain(), kFoundNil);
}

}  // namespace
}  // namespace VexmoraSDK
