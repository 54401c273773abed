// SPDX-License-Identifier: MIT
#include <functional>
#include <string>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/config/Config.h"
#include "VexmoraSDK/platform/ui/Window.h"
#include "VexmoraSDK/views/AdViewHandler.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/PlainPicture.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/Resources.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

const std::string kAds = "https://ads.test/?container=home&types=";

class StopsTest : public SdkTest {
 protected:
    static void answer(VexmoraAdType asked, std::string_view body) {
        const auto view = VexmoraViewFactory::createView("home", asked, nullptr);
        serve(kAds + std::to_string(rawValue(asked)), body);
    }

    static void answerBanner(std::string_view body) { answer(VexmoraAdType::banner, body); }

    static std::shared_ptr<VexmoraView> interstitial() {
        auto view = VexmoraViewFactory::createView("home", VexmoraAdType::mediumRectangle, nullptr);
        view->setFrame({{0, 0}, {320, 480}});
        serve(kAds + "14", "[" + bannerAd("a", 14) + "]");
        serve("https://cdn.test/a", plainPicture(300, 250));
        return view;
    }

    static void makeBannerWith(std::string_view resources) {
        useLibraryFolder(resources);
        VexmoraViewFactory::createView("home", "320x60", nullptr);
    }
};

/// The rows of docs/stops.md that a server, an app or the packaging causes.
TEST_F(StopsTest, SayOnASecondLineWhereTheyHappen) {
    struct Stop {
        std::string firstLine;
        std::string where;
        std::function<void()> cause;
    };
    const std::string nil = "unexpectedly found nil while unwrapping an Optional value";
    const std::string cast = "could not cast value of type '[^']+' to '[^']+'";
    const std::string initializer = "use of unimplemented initializer '[^']+' for class '[^']+'";
    const std::string answered = R"(answer to "https://ads.test/\?container=home&types=77")";
    const std::vector<Stop> stops = {
        {nil, R"(member "adTypeId", )" + answered, [] { answerBanner("[{}]"); }},
        {nil, R"(member "displayName", answer to ".*types=1")",
         [] {
             answer(VexmoraAdType::native,
                    R"([{"adTypeId":1,"clickUrl":"https://a/","bannerUrl":"https://a/",
                        "title":"","description":""}])");
         }},
        {nil, R"(value "78", member "adTypeId", )" + answered,
         [] { answerBanner("[" + bannerAd("a", 78) + "]"); }},
        {nil, R"(value "https://shop.test/a b", member "clickUrl", )" + answered,
         [] { answerBanner("[" + bannerAd("a b") + "]"); }},
        {cast, R"(answer to ".*types=1")",
         [] { answer(VexmoraAdType::native, "[" + bannerAd("a") + "]"); }},
        {cast, answered, [] { answerBanner("{}"); }},
        {cast, answered, [] { answerBanner("[1]"); }},
        {nil, R"(picture "https://cdn.test/a", container "home")",
         [] {
             const auto view = VexmoraViewFactory::createView("home", "320x60", nullptr);
             serve(kAds + "77", "[" + bannerAd("a") + "]");
             serve("https://cdn.test/a", "<html>");
         }},
        {nil, R"(picture "https://cdn.test/b", container "home")",
         [] {
             const auto view = VexmoraViewFactory::createView("home", "320x60", nullptr);
             serve(kAds + "77", "[" + bannerAd("a") + "]");
             view->setContainerId("home");
             serve(kAds + "77", "[" + bannerAd("b") + "]");
             serve("https://cdn.test/a", plainPicture(320, 60));
         }},

        {nil, R"(request "https://ads.test/\?container=two words&types=77")",
         [] { VexmoraViewFactory::createView("two words", "320x60", nullptr); }},
        {nil, "container identifier",
         [] { VexmoraBannerView::create({})->setContainerId(std::nullopt); }},
        {"an object of class '[^']+' is held by no std::shared_ptr: make it with 'create'",
         R"(container "home")", [] { VexmoraBannerView(platform::Rect()).setContainerId("home"); }},
        {"unrecognized selector 'handleTap:' sent to instance of '[^']+'", R"(container "home")",
         [] {
             interstitial()->tap({160, 240});
         }},
        {nil, R"(root view controller, container "home")",
         [] {
             const auto view = interstitial();
             const auto window = std::make_shared<platform::Window>();
             view->setWindow(window);
             view->perform("handleCloseTap:", nullptr);
         }},
        {nil, "application object",
         [] {
             const auto view = VexmoraViewFactory::createView("home", "320x60", nullptr);
             platform::FakeMainQueue::stop();
             platform::FakeUrlSession::answer(kAds + "77", "[]");
         }},
        {initializer, R"(constructor of "VexmoraSDK.Banner")", [] { Banner(); }},
        {initializer, R"(constructor of "VexmoraSDK.Native")", [] { Native(); }},
        {initializer, R"(domain "Elsewhere")", [] { VexmoraError("Elsewhere", 5, std::nullopt); }},

        {nil, R"(entry of Info.plist "ConfigurationPlist", resource folder ".*/no-folder")",
         [] {
             useLibraryFolder("no-folder");
             Config::instance();
         }},
        {nil, R"(property list "settings", resource folder ".*/no-file")",
         [] {
             useLibraryFolder("no-file");
             Config::instance();
         }},
        {nil, R"(setting "requestUrlFormat", resource folder ".*/no-template")",
         [] {
             useLibraryFolder("no-template");
             AdViewHandler();
         }},
        {cast, R"(entry of Info.plist "ConfigurationPlist", resource folder ".*/entry-not-.*")",
         [] {
             useLibraryFolder("entry-not-a-string");
             Config::instance();
         }},
        {"could not load the interface file 'VexmoraBannerView'", R"(folder ".*/no-file/views")",
         [] { makeBannerWith("no-file"); }},
        {cast, R"(interface file "VexmoraBannerView")", [] { makeBannerWith("other-class"); }},
    };
    for (const auto& [firstLine, where, cause] : stops)
        EXPECT_DEATH(cause(),
                     "^[^\n]*fatal error: " + firstLine + "\n  where: " + where + kEndOfReport)
            << where;
}

}  // namespace
}  // namespace VexmoraSDK
