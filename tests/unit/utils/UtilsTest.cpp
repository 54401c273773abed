#include "VexmoraSDK/utils/Utils.h"

#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {
namespace {

using platform::Data;
using platform::dataOf;
using platform::Dictionary;
using platform::FakeUrlSession::answer;
using platform::FakeUrlSession::answerWithoutBody;
using platform::FakeUrlSession::fail;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class UtilsTest : public SdkTest {
 protected:
    /// Fetches an address and logs what comes of it.
    void fetch() {
        Utils::getDataFromUrl(
            url("https://ads.test/"),
            [this](std::optional<Data> data) {
                hear(data ? "body '" + std::string(platform::textOf(*data)) + "'" : "no body");
            },
            hearErrors());
    }
};

TEST_F(UtilsTest, HandsABodyOnInTheBackgroundAsItCame) {
    fetch();
    fetch();
    fetch();
    EXPECT_THAT(heard(), IsEmpty());
    answer("https://ads.test/", "[]");
    answer("https://ads.test/", "");
    answerWithoutBody("https://ads.test/");
    EXPECT_THAT(heard(),
                ElementsAre("background: body '[]'", "background: body ''", "background: no body"));
    EXPECT_THAT(requests(),
                ElementsAre("https://ads.test/", "https://ads.test/", "https://ads.test/"));
}

TEST_F(UtilsTest, TurnsATransportErrorIntoARequestErrorWithItsInformation) {
    const Dictionary info = {{"NSLocalizedDescription", std::string("host not found")}};
    std::vector<VexmoraError> errors;
    const auto keep = [&errors](const VexmoraError& error) { errors.push_back(error); };
    const auto neverSucceed = [](std::optional<Data>) { FAIL(); };
    Utils::getDataFromUrl(url("https://ads.test/"), neverSucceed, keep);
    Utils::getDataFromUrl(url("https://ads.test/"), neverSucceed, keep);
    fail("https://ads.test/", info);
    fail("https://ads.test/");
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].domain(), "Vexmora");
    EXPECT_EQ(errors[0].code(), 3);
    EXPECT_EQ(errors[0].userInfo(), info);
    EXPECT_EQ(errors[1].userInfo(), std::nullopt);
}

TEST_F(UtilsTest, KeepsTheNumbersAndStringsOfARecordAsText) {
    EXPECT_THAT(Utils::parseAdJson(dataOf(R"([
                    {"adTypeId": 77, "clickUrl": "https://shop.test/?a=%41", "extra": null},
                    {"price": 2.9, "minus": -0.0, "yes": true, "no": false, "text": "007",
                     "huge": 1e30, "list": [1], "nested": {"a": 1}, "nul": "a\u0000b"},
                    {}])")),
                ElementsAre(ElementsAre(Pair("adTypeId", "77"),
                                        Pair("clickUrl", "https://shop.test/?a=%41")),
                            ElementsAre(Pair("huge", "9223372036854775807"), Pair("minus", "0"),
                                        Pair("no", "0"), Pair("nul", std::string("a\0b", 3)),
                                        Pair("price", "2"), Pair("text", "007"), Pair("yes", "1")),
                            IsEmpty()));
    EXPECT_THAT(Utils::parseAdJson(dataOf("<html></html>")), IsEmpty());
    EXPECT_THAT(Utils::parseAdJson(dataOf("7")), IsEmpty());
}

using UtilsDeathTest = UtilsTest;

TEST_F(UtilsDeathTest, StopsAtJsonThatIsNoArrayOfObjects) {
    for (const auto* json : {R"({"adTypeId": 77})", "[7]", R"([{}, "ad"])", "[[]]", "[null]"}) {
        EXPECT_DEATH(Utils::parseAdJson(dataOf(json)), "^fatal error: could not cast value of type")
            << json;
    }
}

}  // namespace
}  // namespace VexmoraSDK
