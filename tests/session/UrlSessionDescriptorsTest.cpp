#include <sys/resource.h>

#include <cstdlib>

#include "tests/session/UrlSessionTest.h"

namespace VexmoraSDK::platform {
namespace {

using UrlSessionDescriptorsTest = UrlSessionTest;

TEST_F(UrlSessionDescriptorsTest, FetchesAgainAfterALackOfThem) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            rlimit descriptors;
            getrlimit(RLIMIT_NOFILE, &descriptors);
            rlimit none = descriptors;
            none.rlim_cur = 0;
            setrlimit(RLIMIT_NOFILE, &none);
            const bool failed = fetch(ads("home-bottom")).error.has_value();
            setrlimit(RLIMIT_NOFILE, &descriptors);
            std::exit(failed && fetch(ads("home-bottom")).body ? 7 : 8);
        },
        testing::ExitedWithCode(7), "^$");
}

}  // namespace
}  // namespace VexmoraSDK::platform
