// SPDX-License-Identifier: MIT
#include "VexmoraSDK/config/Config.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "VexmoraSDK/views/AdViewHandler.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/Resources.h"

namespace VexmoraSDK {
namespace {

TEST(ConfigTest, GivesASettingOnlyInItsOwnType) {
    const auto& config = Config::instance();
    EXPECT_EQ(config.settingForKey<std::string>("requestUrlFormat"),
              "https://ads.test/?container=%@&types=%@");
    EXPECT_EQ(config.settingForKey<std::int64_t>("count"), 3);
    EXPECT_EQ(config.settingForKey<std::string>("count"), std::nullopt);
    EXPECT_EQ(config.settingForKey<bool>("enabled"), true);
    EXPECT_EQ(config.settingForKey<std::int64_t>("enabled"), std::nullopt);
    EXPECT_EQ(config.settingForKey<std::string>("missing"), std::nullopt);
}

void readSettingsIn(std::string_view folder) {
    useLibraryFolder(folder);
    Config::instance();
}

TEST(ConfigDeathTest, StopsWithoutAReadableSettingsFile) {
    for (const auto* folder : {"no-folder", "no-entry", "no-file", "unreadable-file"})
        EXPECT_DEATH(readSettingsIn(folder), kFoundNil) << folder;
    EXPECT_DEATH(readSettingsIn("entry-not-a-string"),
                 "^fatal error: could not cast value of type");
}

TEST(ConfigDeathTest, ReadsARelativeFolderAlsoFromAnotherWorkingDirectory) {
    const auto read = [] {
        std::filesystem::current_path(VEXMORA_TEST_RESOURCES);
        platform::Bundle::setLibraryFolder("whole");
        std::filesystem::current_path("/");
        const auto count = Config::instance().settingForKey<std::int64_t>("count");
        std::exit(platform::Bundle::library().folder().is_absolute() && count == 3 ? 0 : 1);
    };
    EXPECT_EXIT(read(), testing::ExitedWithCode(0), "");
}

TEST(ConfigDeathTest, StopsForAMissingTemplateOnlyAtTheFirstAdViewHandler) {
    EXPECT_DEATH(
        {
            readSettingsIn("no-template");
            std::fputs("no stop so far, ", stderr);
            AdViewHandler();
        },
        "^no stop so far, fatal error: unexpectedly found nil");
}

}  // namespace
}  // namespace VexmoraSDK
