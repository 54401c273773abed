#include "VexmoraSDK/platform/Application.h"

#include "tests/qt/AppTest.h"
#include "tests/qt/RecordingOpener.h"

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

TEST_F(ApplicationTest, OpensAddressesOfTheWebAndOfOtherAppsByteForByte) {
    for (const std::string address :
         {"http://127.0.0.1:1/a/../b?sig=%41%c3&next=http://shop.test/%2F#%7e",
          "HTTPS://shop.test/$HOME;('*')", "shop-app:cart?item=1"}) {
        open(address);
        EXPECT_THAT(opener_.opened(), ElementsAre(address));
    }
}

TEST_F(ApplicationTest, RefusesWhatReachesIntoTheDevice) {
    for (const auto* address :
         {"file:///etc/passwd", "FILE:///etc/passwd", "javascript:alert(1)", "JavaScript:alert(1)",
          "data:text/html,hello", "/etc/passwd", "etc/passwd", "//host/share", "?query"}) {
        open(address);
        EXPECT_THAT(opener_.opened(), IsEmpty()) << address;
    }
}

}  // namespace
