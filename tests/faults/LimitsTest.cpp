#include <gmock/gmock.h>

#include "tests/faults/Hosts.h"
#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

/// Memory under a sanitizer is not what it is without.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kFactor = 100;
#else
constexpr long kFactor = 1;
#endif

TEST(LimitsTest, HoldWhateverTheServerSends) {
    const auto rows = rowsOf("limits");
    EXPECT_FALSE(rows.empty());
    for (const auto& row : rows) {
        const auto kind = row.at(1) == "native" ? VexmoraViewType::native : VexmoraViewType::banner;
        EXPECT_EXIT(showAlone({row[0], kind}, row.at(2), kFactor * std::stol(row.at(3))),
                    testing::ExitedWithCode(0), "")
            << row[0];
    }
}

}  // namespace
}  // namespace VexmoraSDK
