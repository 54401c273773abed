#include <gtest/gtest.h>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "tests/fake_platform/FakeApplication.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/fake_platform/FakeUrlSession.h"
#include "tests/torture/Torture.h"

namespace VexmoraSDK {
namespace {

using platform::FakeUrlSession::answer;

struct Placement {
    const char* name;
    VexmoraViewType viewType;
    const char* types;
    const char* ad;
    const char* outcome;
};

std::ostream& operator<<(std::ostream& stream, const Placement& placement) {
    return stream << placement.name;
}

class CoreTortureTest : public testing::TestWithParam<Placement> {
 protected:
    std::string showAnAd(const std::function<void()>& begin) const {
        platform::Bundle::setLibraryFolder(VEXMORA_TEST_RESOURCES "/whole");
        platform::FakeMainQueue::start();
        platform::FakeUrlSession::reset();
        int drawn = 0;
        int told = 0;
        int opened = 0;
        platform::FakeApplication::setOpener([&](const platform::Url&) { ++opened; });
        auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [&](VexmoraView&) { ++drawn; };
        delegate->didHaveError = [&](VexmoraView&, const VexmoraError&) { ++told; };
        const std::string container = "home";
        const std::string request =
            std::string("https://ads.test/?container=home&types=") + GetParam().types;
        const VexmoraError error(VexmoraErrorCodes::RequestError,
                                 platform::Dictionary{{"reason", std::string("lack of memory")},
                                                      {"attempts", std::int64_t{3}}});
        begin();

        auto view = VexmoraViewFactory::createView(container, GetParam().viewType, delegate);
        serve(request, GetParam().ad);
        if (told == 0) serve("https://cdn.test/a", "fake-image 320x60");
        if (GetParam().viewType != VexmoraViewType::interstitial) view->tap({1, 1});
        view.reset();
        const bool restored = isRestored(error);

        const FailingCalls::Spared host;
        return std::to_string(drawn) + " drawn, " + std::to_string(told) + " told, " +
               std::to_string(opened) + " opened, error " + (restored ? "restored" : "unreadable");
    }

 private:
    static void serve(std::string_view url, std::string_view body) {
        {
            const FailingCalls::Spared network;
            answer(url, body);
        }
        platform::FakeMainQueue::drain();
    }

    static bool isRestored(const VexmoraError& error) {
        platform::Coder archive;
        error.encode(archive);
        const auto read = platform::Coder::fromData(archive.data());
        return read && VexmoraError(*read).userInfo() == error.userInfo();
    }
};

TEST_P(CoreTortureTest, ShowsItsAdOrStopsWhenACallFails) {
    const std::string outcome = GetParam().outcome;
    Torture::run(GetParam().name, [this](const auto& begin) { return showAnAd(begin); },
                 {{outcome + "restored", ".*"},
                  {outcome + "unreadable", "plist_from_memory"},
                  {"fatal error: out of memory|terminate called .*bad_alloc'",
                   "operator new|plist_(new|to|dict)_.*"},
                  {"fatal error: unexpectedly found nil while unwrapping an Optional value",
                   "operator new|stat|fopen64|read|plist_from_memory"},
                  {"fatal error: could not load the interface file '.*'",
                   "operator new|stat|fopen64|read|plist_from_memory"}});
}

constexpr char kBanner[] =
    R"([{"adTypeId":77,"clickUrl":"https://shop.test/","bannerUrl":"https://cdn.test/a"}])";
constexpr char kNative[] =
    R"([{"adTypeId":1,"clickUrl":"https://shop.test/","bannerUrl":"https://cdn.test/a",)"
    R"("title":"A title","description":"A text of some length","displayName":"shop.test"}])";

INSTANTIATE_TEST_SUITE_P(
    , CoreTortureTest,
    testing::Values(Placement{"Banner view", VexmoraViewType::banner, "77,83,84", kBanner,
                              "1 drawn, 0 told, 1 opened, error "},
                    Placement{"Native view", VexmoraViewType::native, "1", kNative,
                              "1 drawn, 0 told, 1 opened, error "},
                    Placement{"Interstitial view", VexmoraViewType::interstitial, "15,14", kBanner,
                              "1 drawn, 0 told, 0 opened, error "},
                    Placement{"Banner view, unusable answer", VexmoraViewType::banner, "77,83,84",
                              "<html>", "0 drawn, 2 told, 0 opened, error "}));

}  // namespace
}  // namespace VexmoraSDK
