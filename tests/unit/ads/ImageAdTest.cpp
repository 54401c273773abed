#include "VexmoraSDK/ads/ImageAd.h"

#include <thread>

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/platform/NotificationCenter.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/SdkTest.h"
#include "tests/unit/platform/Listener.h"

namespace VexmoraSDK {
namespace {

using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::answerWithoutBody;
using platform::FakeUrlSession::fail;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kPicture = "https://cdn.test/a.png";

class ImageAdTest : public SdkTest {
 protected:
    std::shared_ptr<Banner> makeBanner() const {
        return Banner::create(url("https://shop.test/"), url(kPicture),
                              VexmoraAdType::mediumRectangle);
    }

    std::shared_ptr<Native> makeNative() const {
        return Native::create(url("https://shop.test/"), "Title", "Text", "Shop", url(kPicture));
    }

    /// From now on each "adReady" is logged, with what its sender is.
    void listenFor(const std::shared_ptr<ImageAd>& ad) {
        listener_ = std::make_shared<platform::Listener>([this, &ad](platform::Object* argument) {
            const auto& notification = dynamic_cast<platform::Notification&>(*argument);
            const bool fromAd = notification.object() == ad;
            hear(std::string("adReady from ") + (fromAd ? "the ad " : "somebody ") +
                 (ad->image() ? "with a picture" : "without a picture"));
        });
        platform::NotificationCenter::defaultCenter().addObserver(listener_, "hear:", "adReady",
                                                                  nullptr);
    }

 private:
    std::shared_ptr<platform::Listener> listener_;
};

TEST_F(ImageAdTest, AnnouncesItselfOnceItsPictureHasCome) {
    const std::shared_ptr<ImageAd> ad = makeBanner();
    listenFor(ad);
    answer(kPicture, "fake-image 320x50");
    EXPECT_THAT(heard(), ElementsAre("background: adReady from the ad with a picture"));
    EXPECT_EQ(ad->image()->size(), (platform::Size{320, 50}));
}

TEST_F(ImageAdTest, AnnouncesItselfWithoutAPictureWhenTheBytesAreNone) {
    const std::shared_ptr<ImageAd> ad = makeNative();
    listenFor(ad);
    answer(kPicture, "<html>not found</html>");
    EXPECT_THAT(heard(), ElementsAre("background: adReady from the ad without a picture"));
}

TEST_F(ImageAdTest, StaysSilentWhenTheFetchFails) {
    const std::shared_ptr<ImageAd> ad = makeBanner();
    listenFor(ad);
    fail(kPicture);
    platform::FakeMainQueue::drain();
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_FALSE(ad->image());
}

TEST_F(ImageAdTest, IsHeldUntilItsPictureHasCome) {
    auto banner = makeBanner();
    const std::weak_ptr<Banner> watched = banner;
    banner.reset();
    EXPECT_FALSE(watched.expired());
    answer(kPicture, "fake-image 320x50");
    EXPECT_TRUE(watched.expired());
}

TEST_F(ImageAdTest, ShowsItsPictureToEveryThreadWhileItArrives) {
    const auto banner = makeBanner();
    std::thread reader([&] {
        while (!banner->image())
            std::this_thread::yield();
        EXPECT_EQ(banner->image()->size(), (platform::Size{320, 50}));
    });
    answer(kPicture, "fake-image 320x50");
    reader.join();
}

using ImageAdDeathTest = ImageAdTest;

TEST_F(ImageAdDeathTest, StopsWhenAPictureHasNoBody) {
    const auto banner = makeBanner();
    EXPECT_DEATH(answerWithoutBody(kPicture), kFoundNil);
}

TEST_F(ImageAdDeathTest, IsNotMadeOfNothing) {
    EXPECT_DEATH(Native(),
                 "^fatal error: use of unimplemented initializer 'init\\(\\)' for class "
                 "'VexmoraSDK.Native'\n$");
    EXPECT_DEATH(Banner(),
                 "^fatal error: use of unimplemented initializer 'init\\(\\)' for class "
                 "'VexmoraSDK.Banner'\n$");
}

}  // namespace
}  // namespace VexmoraSDK
