#include "VexmoraSDK/platform/Object.h"

#include <gmock/gmock.h>

#include "tests/unit/platform/Listener.h"

namespace VexmoraSDK::platform {
namespace {

TEST(ObjectTest, RunsTheMethodThatASelectorNames) {
    Object* heard = nullptr;
    const auto listener = std::make_shared<Listener>([&](Object* argument) { heard = argument; });
    EXPECT_TRUE(listener->respondsTo("hear:"));
    listener->perform("hear:", listener.get());
    EXPECT_EQ(heard, listener.get());
}

TEST(ObjectDeathTest, StopsAtASelectorThatItDoesNotAnswer) {
    const auto listener = std::make_shared<Listener>();
    EXPECT_FALSE(listener->respondsTo("hear"));
    EXPECT_DEATH(listener->perform("hear", nullptr),
                 "^fatal error: unrecognized selector 'hear' sent to instance of 'Listener'\n$");
}

}  // namespace
}  // namespace VexmoraSDK::platform
