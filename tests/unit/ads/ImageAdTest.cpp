// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/ImageAd.h"

#include <thread>

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"
#include "tests/PlainPicture.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/SdkTest.h"
#include "tests/unit/foundation/Listener.h"

namespace VexmoraSDK {
namespace {

using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::answerWithoutBody;
using testing::ElementsAre;

constexpr std::string_view kPicture = "https://cdn.test/a.png";

class ImageAdTest : public SdkTest {
 protected:
    std::shared_ptr<ImageAd> ad_ =
        Banner::create(url("https://shop.test/"), url(kPicture), VexmoraAdType::mediumRectangle);
};

TEST_F(ImageAdTest, AnnouncesItselfOnceItsPictureIsThereAndIsHeldUntilThen) {
    const auto listener = std::make_shared<platform::Listener>([this](platform::Object* argument) {
        const auto sender = dynamic_cast<platform::Notification&>(*argument).object();
        const auto ad = std::dynamic_pointer_cast<ImageAd>(sender);
        hear(ad && ad->image() ? "an ad with a picture" : "something else");
    });
    platform::NotificationCenter::defaultCenter().addObserver(listener, "hear:", "adReady",
                                                              nullptr);
    const std::weak_ptr<ImageAd> watched = ad_;
    ad_.reset();
    EXPECT_FALSE(watched.expired());
    answer(kPicture, plainPicture(320, 50));
    EXPECT_THAT(heard(), ElementsAre("background: an ad with a picture"));
    EXPECT_TRUE(watched.expired());
}

TEST_F(ImageAdTest, GivesItsPictureToAnotherThreadWhileItArrives) {
    std::thread reader([&] {
        while (!ad_->image())
            std::this_thread::yield();
        EXPECT_EQ(ad_->image()->size(), (platform::Size{320, 50}));
    });
    answer(kPicture, plainPicture(320, 50));
    reader.join();
}

using ImageAdDeathTest = ImageAdTest;

TEST_F(ImageAdDeathTest, StopsWhenAPictureHasNoBody) {
    EXPECT_DEATH(answerWithoutBody(kPicture), kFoundNil);
}

TEST_F(ImageAdDeathTest, StopsAtTheInitializersWithoutArguments) {
    EXPECT_DEATH(Native(),
                 "^fatal error: use of unimplemented initializer 'init\\(\\)' for class "
                 "'VexmoraSDK.Native'\n");
    EXPECT_DEATH(Banner(),
                 "^fatal error: use of unimplemented initializer 'init\\(\\)' for class "
                 "'VexmoraSDK.Banner'\n");
}

}  // namespace
}  // namespace VexmoraSDK
