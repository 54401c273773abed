#include <gmock/gmock.h>

#include "VexmoraSDK/errors/VexmoraErrorCodes.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/types/VexmoraViewType.h"

namespace VexmoraSDK {
namespace {

TEST(RawValuesTest, OfAdTypesAreTheServersNumbers) {
    const std::vector<std::intptr_t> numbers = {1, 14, 15, 77, 79, 83, 84};
    for (std::size_t position = 0; position < numbers.size(); ++position) {
        const auto adType = adTypeWithRawValue(numbers[position]);
        ASSERT_TRUE(adType) << numbers[position];
        EXPECT_EQ(rawValues({*adType}), std::vector{numbers[position]});
        EXPECT_EQ(std::hash<VexmoraAdType>()(*adType), position);
    }
    for (const std::intptr_t number : {-1, 0, 2, 16, 78, 85})
        EXPECT_EQ(adTypeWithRawValue(number), std::nullopt);
}

TEST(RawValuesTest, OfViewTypesAndErrorsCountFromOne) {
    EXPECT_EQ(viewTypeWithRawValue(0), std::nullopt);
    EXPECT_EQ(viewTypeWithRawValue(1), VexmoraViewType::banner);
    EXPECT_EQ(viewTypeWithRawValue(3), VexmoraViewType::native);
    EXPECT_EQ(viewTypeWithRawValue(4), std::nullopt);
    EXPECT_EQ(errorCodeWithRawValue(0), std::nullopt);
    EXPECT_EQ(errorCodeWithRawValue(1), VexmoraErrorCodes::UnknownError);
    EXPECT_EQ(errorCodeWithRawValue(7), VexmoraErrorCodes::ImageRequestError);
    EXPECT_EQ(errorCodeWithRawValue(8), std::nullopt);
}

}  // namespace
}  // namespace VexmoraSDK
