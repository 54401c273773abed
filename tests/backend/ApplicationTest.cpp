// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Application.h"

#include "tests/AppTest.h"
#include "tests/RecordingOpener.h"

using testing::ElementsAre;
using testing::IsEmpty;
using VexmoraSDK::AppTest;
using VexmoraSDK::RecordingOpener;
using VexmoraSDK::platform::Url;

namespace {

class ApplicationTest : public AppTest {
 protected:
    static void open(std::string_view address) {
        VexmoraSDK::platform::Application::openUrl(Url::fromString(address).value());
    }

    RecordingOpener opener_;
};

TEST_F(ApplicationTest, OpensAllowedAddressesByteForByteAndNoOthers) {
    VexmoraSDK::platform::Application::allowScheme("shop-app");
    for (const std::string address :
         {"http://127.0.0.1:1/a/../b?sig=%41%c3&next=http://shop.test/%2F#%7e",
          "HTTPS://shop.test/$HOME;('*')", "shop-app:cart?item=1"}) {
        open(address);
        EXPECT_THAT(opener_.opened(), ElementsAre(address));
    }
    open("file:///etc/passwd");
    EXPECT_THAT(opener_.opened(), IsEmpty());
}

TEST_F(ApplicationTest, DoesNotWaitForASlowOpener) {
    opener_.sleepUntilToldToGoOn();
    open("http://shop.test");
    opener_.goOn();
    EXPECT_THAT(opener_.opened(), ElementsAre("http://shop.test"));
}

}  // namespace
