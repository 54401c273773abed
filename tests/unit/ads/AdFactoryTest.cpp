// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/AdFactory.h"

#include "tests/unit/FatalReports.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

class AdFactoryTest : public SdkTest {
 protected:
    /// A record with all needed members and some that are ignored.
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

using AdFactoryDeathTest = AdFactoryTest;

TEST_F(AdFactoryDeathTest, StopsAtARecordThatMakesNoModelOrOneOfTheOtherKind) {
    for (const auto* member : {"adTypeId", "clickUrl", "bannerUrl"})
        EXPECT_DEATH(AdFactory::createAd<Banner>(without(record("77"), member)), kFoundNil);
    for (const auto* member : {"title", "description", "displayName"})
        EXPECT_DEATH(AdFactory::createAd<Native>(without(record("1"), member)), kFoundNil);
    for (const auto* adTypeId : {"", "+", "78", " 77", "77 ", "77.0", "0x4d", "+-77", "4294967373",
                                 "18446744073709551693"}) {
        EXPECT_DEATH(AdFactory::createAd<Banner>(record(adTypeId)), kFoundNil) << adTypeId;
    }
    for (const auto* member : {"clickUrl", "bannerUrl"}) {
        EXPECT_DEATH(AdFactory::createAd<Banner>(with(record("77"), member, "no address")),
                     kFoundNil);
    }
    EXPECT_DEATH(AdFactory::createAd<Native>(record("77")),
                 "^fatal error: could not cast value of type 'VexmoraSDK.Banner' to "
                 "'VexmoraSDK.Native'\n");
}

}  // namespace
}  // namespace VexmoraSDK
