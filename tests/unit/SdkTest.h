// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/views/VexmoraDelegate.h"
#include "tests/fake_platform/FakeApplication.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/fake_platform/FakeUrlSession.h"

namespace VexmoraSDK {

/// The test plays the main thread, the network and the user. It logs what it hears, and whether it
/// hears it on a background thread.
class SdkTest : public testing::Test {
 protected:
    SdkTest() {
        platform::FakeMainQueue::start();
        platform::FakeUrlSession::reset();
        platform::FakeApplication::setOpener(
            [this](const platform::Url& url) { hear("opens " + url.text()); });
    }

    ~SdkTest() override {
        platform::FakeUrlSession::reset();
        platform::FakeMainQueue::stop();
    }

    void hear(const std::string& what) {
        const bool onMain = platform::MainQueue::main()->isMainThread();
        log_.push_back(onMain ? what : "background: " + what);
    }

    /// The log since the last call.
    std::vector<std::string> heard() { return std::exchange(log_, {}); }

    /// Answers a request, then runs the main queue.
    static void serve(std::string_view url, std::string_view body) {
        platform::FakeUrlSession::answer(url, body);
        platform::FakeMainQueue::drain();
    }

    static std::vector<std::string> requests() { return platform::FakeUrlSession::requests(); }

    static platform::Url url(std::string_view text) {
        return platform::Url::fromString(text).value();
    }

    /// The JSON object of a banner ad.
    static std::string bannerAd(std::string_view picture, int adType = 77) {
        return R"({"adTypeId":)" + std::to_string(adType) + R"(,"clickUrl":"https://shop.test/)" +
               std::string(picture) + R"(","bannerUrl":"https://cdn.test/)" + std::string(picture) +
               R"("})";
    }

 private:
    std::vector<std::string> log_;
};

}  // namespace VexmoraSDK
