#include "VexmoraSDK/types/VexmoraAdType.h"

#include <gmock/gmock.h>

namespace VexmoraSDK {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST(VexmoraAdTypeTest, StandsUnderTheServersNumbersAndHashesByPosition) {
    const std::vector<std::intptr_t> numbers = {1, 14, 15, 77, 79, 83, 84};
    const std::vector<VexmoraAdType> adTypes = {
        VexmoraAdType::native,     VexmoraAdType::mediumRectangle, VexmoraAdType::leaderboard,
        VexmoraAdType::banner,     VexmoraAdType::slideshow,       VexmoraAdType::mediumBanner,
        VexmoraAdType::fullBanner,
    };
    EXPECT_EQ(rawValues(adTypes), numbers);
    for (std::size_t position = 0; position < numbers.size(); ++position) {
        EXPECT_EQ(adTypeWithRawValue(numbers[position]), adTypes[position]);
        EXPECT_EQ(std::hash<VexmoraAdType>()(adTypes[position]), position);
    }
    for (const std::intptr_t number : {-1, 0, 2, 16, 78, 85})
        EXPECT_EQ(adTypeWithRawValue(number), std::nullopt);
}

TEST(VexmoraAdTypeTest, HasOneTypeForEachOfFiveSizesWrittenExactlySo) {
    EXPECT_THAT(adTypesBySize(),
                UnorderedElementsAre(Pair("300x250", ElementsAre(VexmoraAdType::mediumRectangle)),
                                     Pair("728x90", ElementsAre(VexmoraAdType::leaderboard)),
                                     Pair("320x60", ElementsAre(VexmoraAdType::banner)),
                                     Pair("320x100", ElementsAre(VexmoraAdType::mediumBanner)),
                                     Pair("468x60", ElementsAre(VexmoraAdType::fullBanner))));
    for (const auto* size : {"", "320X60", " 320x60", "320x50"})
        EXPECT_FALSE(adTypesBySize().contains(size)) << size;
}

}  // namespace
}  // namespace VexmoraSDK
