// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "VexmoraSDK/errors/VexmoraErrorCodes.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/types/VexmoraViewType.h"

namespace VexmoraSDK {
namespace {

TEST(RawValuesTest, AreTheServersNumbersForAdTypesAndCountFromOneForTheRest) {
    std::size_t position = 0;
    for (const std::intptr_t number : {1, 14, 15, 77, 79, 83, 84}) {
        const auto adType = adTypeWithRawValue(number).value();
        EXPECT_EQ(rawValues({adType}), std::vector{number});
        EXPECT_EQ(std::hash<VexmoraAdType>()(adType), position++);
    }
    for (const std::intptr_t number : {-1, 0, 2, 16, 78, 85})
        EXPECT_EQ(adTypeWithRawValue(number), std::nullopt);
    EXPECT_EQ(viewTypeWithRawValue(1), VexmoraViewType::banner);
    EXPECT_EQ(viewTypeWithRawValue(3), VexmoraViewType::native);
    EXPECT_EQ(errorCodeWithRawValue(1), VexmoraErrorCodes::UnknownError);
    EXPECT_EQ(errorCodeWithRawValue(7), VexmoraErrorCodes::ImageRequestError);
    EXPECT_FALSE(viewTypeWithRawValue(0) || viewTypeWithRawValue(4));
    EXPECT_FALSE(errorCodeWithRawValue(0) || errorCodeWithRawValue(8));
}

}  // namespace
}  // namespace VexmoraSDK
