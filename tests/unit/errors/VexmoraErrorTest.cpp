#include "VexmoraSDK/errors/VexmoraError.h"

#include <gmock/gmock.h>

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

TEST(VexmoraErrorTest, CarriesItsCodeInTheDomainOfTheLibrary) {
    const VexmoraError error(VexmoraErrorCodes::NoFill, std::nullopt);
    EXPECT_EQ(error.domain(), "Vexmora");
    EXPECT_EQ(error.code(), 5);
    EXPECT_EQ(error.userInfo(), std::nullopt);
}

TEST(VexmoraErrorTest, HasCodesFromOneToSeven) {
    EXPECT_EQ(errorCodeWithRawValue(0), std::nullopt);
    EXPECT_EQ(errorCodeWithRawValue(1), VexmoraErrorCodes::UnknownError);
    EXPECT_EQ(errorCodeWithRawValue(6), VexmoraErrorCodes::InvalidViewTypeError);
    EXPECT_EQ(errorCodeWithRawValue(7), VexmoraErrorCodes::ImageRequestError);
    EXPECT_EQ(errorCodeWithRawValue(8), std::nullopt);
}

TEST(VexmoraErrorTest, KeepsAllItHoldsThroughAnArchive) {
    const Dictionary everything = {
        {"description", std::string("no connection & <nothing> else, déjà")},
        {"attempts", std::int64_t{-3}},
        {"seconds", 0.1},
        {"retry", true},
        {"bytes", platform::Data{std::byte{0}, std::byte{255}}},
        {"when", platform::Date(platform::Date::duration(-1))},
        {"nothing", platform::Value()},
        {std::string("a \0 key", 7), std::string("%n \x01\r\0\xff", 7)},
        {"causes", Array{std::string("a"), Dictionary{{"b", std::int64_t{1}}}}},
    };
    const VexmoraError error(VexmoraErrorCodes::RequestError, everything);
    const auto restored = archivedAndRestored(error);
    EXPECT_EQ(restored.domain(), "Vexmora");
    EXPECT_EQ(restored.code(), 3);
    EXPECT_EQ(restored.userInfo(), everything);
}

TEST(VexmoraErrorTest, KeepsAbsentAndEmptyUserInformationApartThroughAnArchive) {
    const VexmoraError absent(VexmoraErrorCodes::NoFill, std::nullopt);
    const VexmoraError empty(VexmoraErrorCodes::NoFill, Dictionary());
    EXPECT_EQ(archivedAndRestored(absent).userInfo(), std::nullopt);
    EXPECT_EQ(archivedAndRestored(empty).userInfo(), Dictionary());
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
}

TEST(VexmoraErrorDeathTest, RefusesAFreeDomain) {
    EXPECT_DEATH(VexmoraError("Elsewhere", 5, std::nullopt),
                 "^errors/VexmoraError: 6: 20: fatal error: use of unimplemented initializer "
                 "'init\\(domain:code:userInfo:\\)' for class 'VexmoraSDK.VexmoraError'\n$");
}

}  // namespace
}  // namespace VexmoraSDK
