#include "VexmoraSDK/config/Config.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <thread>

#include "VexmoraSDK/views/AdViewHandler.h"
#include "tests/unit/FatalReports.h"
#include "tests/unit/Resources.h"

namespace VexmoraSDK {
namespace {

TEST(ConfigTest, GivesASettingOnlyAsWhatItIs) {
    const auto& config = Config::instance();
    EXPECT_EQ(config.settingForKey<std::string>("requestUrlFormat"),
              "https://ads.test/?container=%@&types=%@");
    EXPECT_EQ(config.settingForKey<std::int64_t>("requestUrlFormat"), std::nullopt);
    EXPECT_EQ(config.settingForKey<std::int64_t>("count"), 3);
    EXPECT_EQ(config.settingForKey<std::string>("count"), std::nullopt);
    EXPECT_EQ(config.settingForKey<bool>("enabled"), true);
    EXPECT_EQ(config.settingForKey<std::int64_t>("enabled"), std::nullopt);
    EXPECT_EQ(config.settingForKey<std::string>("missing"), std::nullopt);
}

TEST(ConfigTest, IsTheSameForThreadsThatMeetAtItsFirstUse) {
    const Config* seenElsewhere = nullptr;
    std::thread elsewhere([&] { seenElsewhere = &Config::instance(); });
    const Config* seenHere = &Config::instance();
    elsewhere.join();
    EXPECT_EQ(seenHere, seenElsewhere);
}

void readSettingsIn(std::string_view folder) {
    useLibraryFolder(folder);
    Config::instance();
}

TEST(ConfigDeathTest, StopsWithoutAReadableSettingsFile) {
    EXPECT_DEATH(readSettingsIn("no-folder"), kFoundNil);
    EXPECT_DEATH(readSettingsIn("no-entry"), kFoundNil);
    EXPECT_DEATH(readSettingsIn("no-file"), kFoundNil);
    EXPECT_DEATH(readSettingsIn("unreadable-file"), kFoundNil);
    EXPECT_DEATH(readSettingsIn("entry-not-a-string"),
                 "^fatal error: could not cast value of type");
}

TEST(ConfigDeathTest, LeavesAMissingTemplateToTheFirstViewHelper) {
    EXPECT_EXIT(
        {
            readSettingsIn("no-template");
            std::_Exit(Config::instance().settingForKey<std::string>("requestUrlFormat") ? 1 : 0);
        },
        testing::ExitedWithCode(0), "^$");
    EXPECT_DEATH(
        {
            useLibraryFolder("no-template");
            AdViewHandler();
        },
        kFoundNil);
}

}  // namespace
}  // namespace VexmoraSDK
