#include "VexmoraSDK/types/VexmoraViewType.h"

#include <gmock/gmock.h>

namespace VexmoraSDK {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

TEST(VexmoraViewTypeTest, CountsFromOne) {
    EXPECT_EQ(viewTypeWithRawValue(0), std::nullopt);
    EXPECT_EQ(viewTypeWithRawValue(1), VexmoraViewType::banner);
    EXPECT_EQ(viewTypeWithRawValue(2), VexmoraViewType::interstitial);
    EXPECT_EQ(viewTypeWithRawValue(3), VexmoraViewType::native);
    EXPECT_EQ(viewTypeWithRawValue(4), std::nullopt);
}

TEST(VexmoraViewTypeTest, ShowsLargeSizesOnAScreenOfTheirOwn) {
    EXPECT_THAT(adViewBySize(), UnorderedElementsAre(Pair("300x250", VexmoraViewType::interstitial),
                                                     Pair("728x90", VexmoraViewType::interstitial),
                                                     Pair("320x60", VexmoraViewType::banner),
                                                     Pair("320x100", VexmoraViewType::banner),
                                                     Pair("468x60", VexmoraViewType::banner)));
}

}  // namespace
}  // namespace VexmoraSDK
