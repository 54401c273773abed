#include "VexmoraSDK/platform/Value.h"

#include <gmock/gmock.h>

#include <limits>

namespace VexmoraSDK::platform {
namespace {

TEST(ValueTest, HasTheIntegerValueOfNumbersAndTruthsOnly) {
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(Value(kMin).integerValue(), kMin);
    EXPECT_EQ(Value(2.9).integerValue(), 2);
    EXPECT_EQ(Value(-2.9).integerValue(), -2);
    EXPECT_EQ(Value(-0.0).integerValue(), 0);
    EXPECT_EQ(Value(9223372036854775808.0).integerValue(), kMax);
    EXPECT_EQ(Value(-1e300).integerValue(), kMin);
    EXPECT_EQ(Value(true).integerValue(), 1);
    EXPECT_EQ(Value(false).integerValue(), 0);
    EXPECT_EQ(Value(std::string("7")).integerValue(), std::nullopt);
    EXPECT_EQ(Value().integerValue(), std::nullopt);
    EXPECT_EQ(Value(Array{std::int64_t{7}}).integerValue(), std::nullopt);
}

}  // namespace
}  // namespace VexmoraSDK::platform
