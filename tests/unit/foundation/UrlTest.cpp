// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Url.h"

#include <gmock/gmock.h>

namespace VexmoraSDK::platform {
namespace {

TEST(UrlTest, KeepsTheTextByteForByte) {
    for (const auto* text : {"https://shop.test/%41%c3%C3?sig=a+b%2F/../x&y=1,2;z='(*)'#top",
                             "HTTP://Shop.Test:80", "app://open/a//b", "mailto:someone@shop.test",
                             "http://[::1]:8080/", "../relative?x=1", "?", "//shop.test/a"}) {
        const auto url = Url::fromString(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->text(), text);
    }
}

TEST(UrlTest, RefusesCharactersThatAUrlMayNotHold) {
    using namespace std::string_view_literals;
    for (const auto text :
         {""sv, " "sv, "https://a.test/a b"sv, "https://a.test/a|b"sv, "https://a.test/{a}"sv,
          "https://a.test/a^b"sv, "https://a.test/\"a\""sv, "https://a.test/a\\b"sv,
          "https://a.test/<a>"sv, "https://a.test/\xC3\xA9"sv, "https://a.test/%zz"sv,
          "https://a.test/%4"sv, "https://a.test/%"sv, "https://[::1/"sv, "https://a.test/\n"sv,
          "https://a.test/\0"sv, "1http://a.test/"sv}) {
        EXPECT_FALSE(Url::fromString(text)) << text;
    }
}

}  // namespace
}  // namespace VexmoraSDK::platform
