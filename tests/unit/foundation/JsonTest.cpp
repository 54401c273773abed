// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Json.h"

#include <gmock/gmock.h>

#include <limits>

namespace VexmoraSDK::platform {
namespace {

using testing::HasSubstr;

std::optional<Value> valueOf(std::string_view text) {
    const auto result = Json::read(dataOf(text));
    const auto* value = std::get_if<Value>(&result);
    return value ? std::optional(*value) : std::nullopt;
}

/// The only element of the array that `text` is, as an integer.
std::optional<std::int64_t> integerIn(std::string_view text) {
    return valueOf(text).value().as<Array>()->at(0).integerValue();
}

Dictionary errorInfoOf(std::string_view text) {
    return std::get<Error>(Json::read(dataOf(text))).userInfo().value();
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonTest, ReadsArraysObjectsAndWholeTextsAndTheLastOfDuplicateMembers) {
    using namespace std::string_literals;
    EXPECT_EQ(valueOf(R"([1, -2.5, true, null, [], {"a": 1, "a": 3}])"),
              Value(Array{std::int64_t{1}, -2.5, true, Value(), Array(),
                          Dictionary{{"a", std::int64_t{3}}}}));
    EXPECT_EQ(valueOf("\xEF\xBB\xBF{\"a\": {\"b\": 1}}"),
              Value(Dictionary{{"a", Dictionary{{"b", std::int64_t{1}}}}}));
    EXPECT_EQ(valueOf(R"(["a\u0000b", "\ud83d\ude00", "\/\"\\\n", "007"])"),
              Value(Array{"a\0b"s, "\U0001F600"s, "/\"\\\n"s, "007"s}));
}

TEST(JsonTest, GivesTheNearestIntegerOfNumbersOfAnySize) {
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(integerIn("[9223372036854775807]"), kMax);
    EXPECT_EQ(integerIn("[9223372036854775808]"), kMax);
    EXPECT_EQ(integerIn("[18446744073709551616]"), kMax);
    EXPECT_EQ(integerIn("[1e400]"), kMax);
    EXPECT_EQ(integerIn("[-9223372036854775809]"), kMin);
    EXPECT_EQ(integerIn("[-1e400]"), kMin);
    EXPECT_EQ(integerIn("[-0.0]"), 0);
    EXPECT_EQ(integerIn("[1e-400]"), 0);
}

TEST(JsonTest, ReadsNestingOf512AndNoMore) {
    EXPECT_TRUE(valueOf(nested(512)));
    EXPECT_FALSE(valueOf(nested(513)));
    EXPECT_FALSE(valueOf(std::string(1'000'000, '[')));
}

TEST(JsonTest, RefusesOtherTopLevelsAndSyntaxThatOtherReadersAccept) {
    using namespace std::string_view_literals;
    for (const auto text : {""sv, " "sv, "\xEF\xBB\xBF"sv, "7"sv, "\"text\""sv, "true"sv, "null"sv,
                            "<html></html>"sv, "[1"sv, "[1] 2"sv, "[]\0"sv, "\xFF\xFE["sv})
        EXPECT_FALSE(valueOf(text)) << text;
    for (const std::string element : {"1,", "01", "+1", ".5", "NaN", "'a'", "1 /* one */",
                                      "\"a\tb\"", "\"\xff\xfe\"", "\"\xed\xa0\x80\"", "{a: 1}"}) {
        EXPECT_FALSE(valueOf("[" + element + "]")) << element;
    }
}

TEST(JsonTest, DescribesAnErrorAndGivesItsByteOffset) {
    const auto info = errorInfoOf("[1, oops]");
    EXPECT_FALSE(info.at("NSLocalizedDescription").as<std::string>()->empty());
    EXPECT_THAT(*info.at("NSDebugDescription").as<std::string>(), HasSubstr("4"));
    EXPECT_THAT(*errorInfoOf("\xEF\xBB\xBF[1, oops]").at("NSDebugDescription").as<std::string>(),
                HasSubstr("7"));
    EXPECT_TRUE(errorInfoOf("7").contains("NSLocalizedDescription"));
}

TEST(JsonTest, RefusesATextOfMoreThanAMebibyte) {
    const auto reads = [](std::size_t size) {
        return std::holds_alternative<Value>(Json::read(dataOf("[]" + std::string(size - 2, ' '))));
    };
    EXPECT_TRUE(reads(1 << 20));
    EXPECT_FALSE(reads((1 << 20) + 1));
}

}  // namespace
}  // namespace VexmoraSDK::platform
