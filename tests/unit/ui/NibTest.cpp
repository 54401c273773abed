// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/Nib.h"

#include <gmock/gmock.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/TapGestureRecognizer.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "tests/unit/FatalReports.h"

namespace VexmoraSDK::platform {
namespace {

/// A view class of the caller, with an outlet and an action.
class Panel : public View {
 public:
    explicit Panel(const Coder& coder) : View(coder) {}

    void setOutlet(std::string_view outlet, const std::shared_ptr<Object>& object) override {
        if (outlet != "label") return View::setOutlet(outlet, object);
        label = std::dynamic_pointer_cast<TextView>(object);
    }

    std::shared_ptr<TextView> label;
    int pressed = 0;

 protected:
    Method method(std::string_view selector) const override {
        if (selector != "press:") return View::method(selector);
        return [](Object& self, Object*) { ++static_cast<Panel&>(self).pressed; };
    }
};

class NibTest : public testing::Test {
 protected:
    ~NibTest() override {
        std::filesystem::remove_all(folder_);
        unsetenv(kFolderVariable);
    }

    /// The views of a file whose top-level objects are these.
    std::vector<std::shared_ptr<View>> load(const std::string& objects) const {
        std::ofstream(folder_ / "views" / "Panel.nib")
            << "<plist version=\"1.0\"><dict><key>objects</key><array>" << objects
            << "</array></dict></plist>";
        return Nib("Panel", Bundle(folder_)).instantiate({{"Panel", [](const Coder& coder) {
                                                               return makeSharedOnMain<Panel>(
                                                                   coder);
                                                           }}});
    }

    static constexpr const char* kFolderVariable = "VEXMORA_NIB_TEST_FOLDER";

    /// Makes a folder. The process of a death test uses its parent's, and the parent removes it.
    static std::filesystem::path makeFolder() {
        if (const char* inherited = std::getenv(kFolderVariable)) return inherited;
        std::string path = std::filesystem::temp_directory_path() / "vexmora-XXXXXX";
        if (!mkdtemp(path.data())) throw std::runtime_error("cannot make a temporary folder");
        std::filesystem::create_directory(path + "/views");
        setenv(kFolderVariable, path.c_str(), 1);
        return path;
    }

    const std::filesystem::path folder_ = makeFolder();
};

TEST_F(NibTest, MakesTheTreeAndConnectsIt) {
    const auto views = load(R"(
        <dict><key>class</key><string>Panel</string>
          <key>frame</key><array><integer>1</integer><real>2.5</real><integer>200</integer>
            <integer>100</integer></array>
          <key>subviews</key><array>
            <dict><key>class</key><string>TextView</string><key>id</key><string>words</string>
              <key>text</key><string>Hello</string></dict>
            <dict><key>class</key><string>Button</string><key>id</key><string>close</string>
              <key>title</key><string>x</string>
              <key>frame</key><array><integer>0</integer><integer>0</integer><integer>20</integer>
                <integer>20</integer></array>
              <key>pins</key><dict><key>right</key><integer>14</integer><key>top</key>
                <integer>14</integer></dict></dict></array>
          <key>outlets</key><dict><key>label</key><string>words</string></dict>
          <key>actions</key><array><dict><key>view</key><string>close</string>
            <key>selector</key><string>press:</string></dict></array></dict>)");
    ASSERT_EQ(views.size(), 1u);
    auto& panel = dynamic_cast<Panel&>(*views.front());
    EXPECT_EQ(panel.frame(), (Rect{{1, 2.5}, {200, 100}}));
    EXPECT_EQ(panel.label->text(), "Hello");

    // A tap 12 points beside the button hits it, one 13 points beside it does not.
    const auto& button = *panel.subviews().back();
    EXPECT_EQ(button.frame(), (Rect{{166, 14}, {20, 20}}));
    EXPECT_TRUE(panel.tap({198, 24}));
    EXPECT_FALSE(panel.tap({153, 24}));
    EXPECT_EQ(panel.pressed, 1);

    panel.setSafeAreaInsets({30, 0, 0, 10});
    panel.setFrame({{0, 0}, {300, 100}});
    EXPECT_EQ(button.frame(), (Rect{{256, 44}, {20, 20}}));
}

TEST_F(NibTest, StopsAtUnknownFilesClassesIdsAndOutlets) {
    EXPECT_DEATH(Nib("Missing", Bundle(folder_)),
                 "^fatal error: could not load the interface file 'Missing'\n");
    EXPECT_DEATH(load("<dict><key>class</key><string>Oval</string></dict>"),
                 "unknown class 'Oval'");
    EXPECT_DEATH(load("<dict/>"), kFoundNil);
    EXPECT_DEATH(load(R"(<dict><key>class</key><string>Panel</string><key>outlets</key>
                         <dict><key>label</key><string>nobody</string></dict></dict>)"),
                 kFoundNil);
    EXPECT_DEATH(load(R"(<dict><key>class</key><string>Panel</string><key>id</key>
                         <string>me</string><key>outlets</key>
                         <dict><key>logo</key><string>me</string></dict></dict>)"),
                 "class 'View' has no outlet 'logo'");
}

}  // namespace
}  // namespace VexmoraSDK::platform
