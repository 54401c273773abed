#include "VexmoraSDK/platform/Font.h"

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>
#include <QtGui/QFontDatabase>

#include "tests/qt/AppTest.h"

using testing::AnyOf;
using VexmoraSDK::AppTest;
using VexmoraSDK::platform::Font;

namespace {

using FontTest = AppTest;

std::string familyNamed(std::string_view name) {
    const auto font = Font::named(name, 12);
    return font ? font->family() : "absent";
}

std::string styleNamed(std::string_view name) {
    const auto font = Font::named(name, 12);
    return font ? font->style() : "absent";
}

TEST_F(FontTest, FindsAnInstalledFamilyInItsStyles) {
    EXPECT_EQ(familyNamed("Liberation Sans"), "Liberation Sans");
    EXPECT_EQ(styleNamed("Liberation Sans"), "");
    EXPECT_EQ(styleNamed("Liberation Sans-Bold"), "Bold");
    EXPECT_EQ(Font::named("Liberation Sans", 13.5)->size(), 13.5);
}

TEST_F(FontTest, HasAFamilyThatStandsInForHelvetica) {
    const auto standIn = AnyOf("Helvetica", "Nimbus Sans", "Liberation Sans", "Arial");
    EXPECT_THAT(familyNamed("Helvetica"), standIn);
    EXPECT_THAT(familyNamed("Helvetica-Bold"), standIn);
    EXPECT_EQ(styleNamed("Helvetica-Bold"), "Bold");
}

TEST_F(FontTest, TakesObliqueAndItalicForTheSame) {
    EXPECT_NE(styleNamed("Helvetica-Oblique"), "absent");
    EXPECT_EQ(styleNamed("Helvetica-Oblique"), styleNamed("Helvetica-Italic"));
    EXPECT_EQ(styleNamed("Helvetica-BoldOblique"), styleNamed("Helvetica-BoldItalic"));
}

TEST_F(FontTest, IsAbsentForWhatIsNotInstalled) {
    for (const auto* name : {"No Such Family", "No Such Family-Bold", "Helvetica-NoSuchStyle",
                             "Helvetica-", "-Bold", "-", ""}) {
        EXPECT_EQ(familyNamed(name), "absent") << name;
    }
}

TEST_F(FontTest, HasAnInstalledFontOfTheSystem) {
    const auto font = Font::system(12);
    EXPECT_TRUE(QFontDatabase::hasFamily(QString::fromStdString(font.family())));
    EXPECT_EQ(font.size(), 12);
}

TEST_F(FontTest, HearsOfFontsThatComeAndGo) {
    // An installed font under another name of the same length.
    QFile file(
        QStandardPaths::locate(QStandardPaths::FontsLocation,
                               QStringLiteral("truetype/liberation/LiberationSans-Regular.ttf")));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    QByteArray font = file.readAll();
    const QByteArray utf16(QByteArray("\0L\0i\0b\0e\0r", 10));
    font.replace(utf16, QByteArray("\0C\0o\0m\0e\0t", 10)).replace("Liber", "Comet");

    EXPECT_EQ(familyNamed("Cometation Sans"), "absent");
    const int id = QFontDatabase::addApplicationFontFromData(font);
    EXPECT_EQ(familyNamed("Cometation Sans"), "Cometation Sans");
    QFontDatabase::removeApplicationFont(id);
    EXPECT_EQ(familyNamed("Cometation Sans"), "absent");
}

}  // namespace
