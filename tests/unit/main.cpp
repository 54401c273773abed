// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "tests/unit/Resources.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Death tests start in a process of their own, in which nothing has been used yet.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    VexmoraSDK::useLibraryFolder("whole");
    return RUN_ALL_TESTS();
}
