#include <gmock/gmock.h>

#include <string_view>

#include "tests/faults/Page.h"
#include "tests/faults/Site.h"

// What fontconfig has loaded it keeps.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

/// With `--write FILE` the tables of that page are written anew.
int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const bool writes = argc == 3 && std::string_view(argv[1]) == "--write";
    if (argc > 1 && !writes) return 2;

    VexmoraSDK::Site::requestUrlFormat();
    const int result = RUN_ALL_TESTS();
    if (result == 0 && writes) return VexmoraSDK::Page::write(argv[2]) ? 0 : 1;
    return result;
}
