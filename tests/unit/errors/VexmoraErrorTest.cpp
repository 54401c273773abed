// SPDX-License-Identifier: MIT
#include "VexmoraSDK/errors/VexmoraError.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <limits>

namespace VexmoraSDK {
namespace {

using platform::Array;
using platform::Coder;
using platform::Dictionary;

VexmoraError archivedAndRestored(const platform::Error& error) {
    Coder archive;
    error.encode(archive);
    return VexmoraError(Coder::fromData(archive.data()).value());
}

TEST(VexmoraErrorTest, KeepsAllItHoldsThroughAnArchive) {
    const Dictionary everything = {
        {"description", std::string("no connection & <nothing> else, déjà, %41")},
        {"attempts", std::int64_t{-3}},
        {"seconds", 0.1},
        {"retry", true},
        {"bytes", platform::Data{std::byte{0}, std::byte{255}}},
        {"when", platform::Date(platform::Date::duration(-1))},
        {"after 2038", platform::Date(std::chrono::sys_days(std::chrono::year(2100) / 1 / 1))},
        {"nothing", platform::Value()},
        {std::string("a \0 key", 7), std::string("%n \x01\r\0\xff", 7)},
        {"causes", Array{std::string("a"), Dictionary{{"b", std::int64_t{1}}}}},
    };
    const VexmoraError error(VexmoraErrorCodes::RequestError, everything);
    const auto restored = archivedAndRestored(error);
    EXPECT_EQ(restored.domain(), "Vexmora");
    EXPECT_EQ(restored.code(), 3);
    EXPECT_EQ(restored.userInfo(), everything);

    for (const std::optional<Dictionary>& none : {std::optional<Dictionary>(), {Dictionary()}}) {
        const VexmoraError uninformed(VexmoraErrorCodes::NoFill, none);
        EXPECT_EQ(archivedAndRestored(uninformed).userInfo(), none);
    }
}

TEST(VexmoraErrorTest, RestoresWhateverAnArchiveHolds) {
    const auto foreign = archivedAndRestored(platform::Error("Elsewhere", -1001, std::nullopt));
    EXPECT_EQ(foreign.domain(), "Elsewhere");
    EXPECT_EQ(foreign.code(), -1001);

    const VexmoraError nothing{Coder()};
    EXPECT_EQ(nothing.domain(), "");
    EXPECT_EQ(nothing.code(), 0);
    EXPECT_EQ(nothing.userInfo(), std::nullopt);

    EXPECT_FALSE(Coder::fromData(platform::dataOf("no archive")));

    // A machine with longer words may have written it.
    Coder archive;
    archive.encode("NSCode", std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(VexmoraError(Coder::fromData(archive.data()).value()).code(), INTPTR_MAX);
    archive.encode("NSCode", std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(VexmoraError(Coder::fromData(archive.data()).value()).code(), INTPTR_MIN);
}

TEST(VexmoraErrorTest, IsRestoredFromAnArchiveOfAnySize) {
    const Dictionary large = {{"causes", Array(20'000, Dictionary{{"a", std::string("b")}})}};
    const VexmoraError error(VexmoraErrorCodes::RequestError, large);
    EXPECT_EQ(archivedAndRestored(error).userInfo(), large);
}

TEST(VexmoraErrorTest, SurvivesAnyOneChangedByteOfItsArchive) {
    Coder archive;
    // Among the zeros of a large number a key can come to hold some.
    const Dictionary causes = {{"a", std::string("no route")}, {"at", std::int64_t{1} << 40}};
    VexmoraError(VexmoraErrorCodes::RequestError, causes).encode(archive);
    const platform::Data whole = archive.data();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        platform::Data damaged = whole;
        for (unsigned byte = 0; byte < 256; ++byte) {
            damaged[at] = static_cast<std::byte>(byte);
            if (const auto read = Coder::fromData(damaged)) VexmoraError(*read).code();
        }
    }
}

TEST(VexmoraErrorDeathTest, RefusesAFreeDomain) {
    EXPECT_DEATH(VexmoraError("Elsewhere", 5, std::nullopt),
                 "^errors/VexmoraError: 6: 20: fatal error: use of unimplemented initializer "
                 "'init\\(domain:code:userInfo:\\)' for class 'VexmoraSDK.VexmoraError'\n");
}

}  // namespace
}  // namespace VexmoraSDK
