#include <gmock/gmock.h>

#include "tests/faults/Hosts.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    VexmoraSDK::requestUrlFormat();
    return RUN_ALL_TESTS();
}
