#include <stdexcept>
#include <thread>

#include "tests/fake_platform/FakeUrlSession.h"
#include "tests/stress/Network.h"

namespace VexmoraSDK {
namespace {

namespace Session = platform::FakeUrlSession;

template <class Answer>
void onceAsked(Answer answer) {
    while (true) {
        try {
            return answer();
        } catch (const std::logic_error&) {
            std::this_thread::yield();
        }
    }
}

}  // namespace

struct Network::Impl {};

Network::Network() = default;

Network::~Network() = default;

std::string Network::requestUrlFormat() const {
    return "https://ads.test/%@?types=%@";
}

void Network::serve(const std::string& container, int adType) {
    const auto place = "https://ads.test/" + container;
    const auto picture = place + ".png";
    const auto ads = place + "?types=" + std::to_string(adType);
    if (container == "fault-cut-short") return onceAsked([&] { Session::fail(ads); });
    if (container == "fault-empty-array") return onceAsked([&] { Session::answer(ads, "[]"); });
    const auto ad = R"([{"adTypeId":)" + std::to_string(adType) + R"(,"clickUrl":")" + place +
                    R"(","bannerUrl":")" + picture +
                    R"(","title":"Title","description":"Text","displayName":"Name"}])";
    onceAsked([&] { Session::answer(ads, ad); });
    onceAsked([&] { Session::answer(picture, "fake-image 320x60"); });
}

}  // namespace VexmoraSDK
