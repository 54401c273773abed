// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "tests/faults/Hosts.h"

namespace VexmoraSDK {
namespace {

// AddressSanitizer takes memory of its own.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kMemoryFactor = 100;
#else
constexpr long kMemoryFactor = 1;
#endif

TEST(LimitsTest, KeepMemoryBounded) {
    const auto rows = rowsOf("limits");
    EXPECT_FALSE(rows.empty());
    for (const auto& row : rows) {
        const auto kind = row.at(1) == "native" ? VexmoraViewType::native : VexmoraViewType::banner;
        const Promise promise{row[0], kind, row.at(2)};
        EXPECT_EXIT(showAlone(promise, kMemoryFactor * std::stol(row.at(3))),
                    testing::ExitedWithCode(0), "")
            << row[0];
    }
}

}  // namespace
}  // namespace VexmoraSDK
