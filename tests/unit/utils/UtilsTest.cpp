// SPDX-License-Identifier: MIT
#include "VexmoraSDK/utils/Utils.h"

#include <gmock/gmock.h>

namespace VexmoraSDK {
namespace {

using platform::dataOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(UtilsTest, KeepsTheNumbersAndStringsOfARecordAsText) {
    EXPECT_THAT(
        Utils::parseAdJson(dataOf(R"([
                    {"adTypeId": 77, "clickUrl": "https://shop.test/?a=%41", "extra": null},
                    {"price": 2.9, "debt": -2.9, "minus": -0.0, "yes": true, "no": false, "text": "007",
                     "huge": 1e30, "list": [1], "nested": {"a": 1}, "nul": "a\u0000b"},
                    {}])")),
        ElementsAre(
            ElementsAre(Pair("adTypeId", "77"), Pair("clickUrl", "https://shop.test/?a=%41")),
            ElementsAre(Pair("debt", "-2"), Pair("huge", "9223372036854775807"), Pair("minus", "0"),
                        Pair("no", "0"), Pair("nul", std::string("a\0b", 3)), Pair("price", "2"),
                        Pair("text", "007"), Pair("yes", "1")),
            IsEmpty()));
    EXPECT_THAT(Utils::parseAdJson(dataOf("<html></html>")), IsEmpty());
    EXPECT_THAT(Utils::parseAdJson(dataOf("7")), IsEmpty());
}

TEST(UtilsDeathTest, StopsAtJsonThatIsNoArrayOfObjects) {
    for (const auto* json : {R"({"adTypeId": 77})", "[7]", R"([{}, "ad"])", "[[]]", "[null]"}) {
        EXPECT_DEATH(Utils::parseAdJson(dataOf(json)), "^fatal error: could not cast value of type")
            << json;
    }
}

}  // namespace
}  // namespace VexmoraSDK
