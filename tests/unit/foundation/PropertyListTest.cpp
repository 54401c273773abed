// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/PropertyList.h"

#include <gmock/gmock.h>

namespace VexmoraSDK::platform {
namespace {

// {"name": "x"}
constexpr std::string_view kBinary(
    "bplist00\xd1\x01\x02TnameQx\x08\x0b\x10\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\0"
    "\0\0\0\0\0\0\0\x12",
    53);

TEST(PropertyListTest, ReadsXmlAndBinary) {
    const Dictionary named = {{"name", std::string("x")}};
    EXPECT_EQ(PropertyList::dictionary(dataOf(kBinary)), named);
    EXPECT_EQ(PropertyList::dictionary(
                  dataOf("<plist><dict><key>name</key><string>x</string></dict></plist>")),
              named);
    EXPECT_EQ(PropertyList::dictionary(
                  dataOf("\xEF\xBB\xBF<plist><dict><key>name</key><false/></dict></plist>")),
              (Dictionary{{"name", false}}));
}

TEST(PropertyListTest, IsAbsentForBytesThatHoldNoDictionary) {
    for (const auto text : {std::string_view(), std::string_view("garbage"), kBinary.substr(0, 30),
                            std::string_view("<plist><array><string>x</string></array></plist>"),
                            std::string_view("<plist><dict><key>name</key><string>x</str")}) {
        EXPECT_FALSE(PropertyList::dictionary(dataOf(text))) << text;
    }
    EXPECT_FALSE(PropertyList::dictionaryWithContentsOfFile("/no/such/file.plist"));
    EXPECT_FALSE(PropertyList::dictionaryWithContentsOfFile("/"));
}

TEST(PropertyListTest, WritesNoNulls) {
    const Dictionary holed = {
        {"a", Value()}, {"b", Array{Value(), std::int64_t{1}}}, {"c", Dictionary{{"d", Value()}}}};
    const Dictionary whole = {{"b", Array{std::int64_t{1}}}, {"c", Dictionary()}};
    EXPECT_EQ(PropertyList::dictionary(PropertyList::binary(holed)), whole);
}

TEST(PropertyListTest, BoundsTheLevelsThatItReads) {
    const auto nested = [](std::size_t levels) {
        std::string list = "<plist><dict><key>a</key>";
        for (std::size_t i = 0; i < levels; ++i)
            list += "<array>";
        for (std::size_t i = 0; i < levels; ++i)
            list += "</array>";
        return PropertyList::dictionary(dataOf(list + "</dict></plist>"));
    };
    EXPECT_EQ(nested(PropertyList::kMaxLevels), nested(9'000));
    EXPECT_NE(nested(PropertyList::kMaxLevels), nested(PropertyList::kMaxLevels - 1));
    EXPECT_FALSE(nested(10'000));
}

}  // namespace
}  // namespace VexmoraSDK::platform
