// SPDX-License-Identifier: MIT
#include "adserver/Catalog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

using VexmoraSDK::Catalog;

namespace {

class CatalogTest : public testing::Test {
 protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_ / "pictures");
        std::ofstream(folder_ / "pictures/tea.png") << "never looked into";
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    static std::string mistakesOf(const std::filesystem::path& file) {
        try {
            Catalog::load(file);
        } catch (const std::runtime_error& mistakes) {
            return mistakes.what();
        }
        return "none";
    }

    /// The mistakes of a catalogue with this text, without the file's name.
    std::string mistakesIn(const std::string& text) {
        std::ofstream(file_) << text;
        std::string mistakes = mistakesOf(file_);
        const std::string beginning = file_.string() + ':';
        for (std::size_t at = 0; (at = mistakes.find(beginning, at)) != mistakes.npos;)
            mistakes.erase(at, beginning.size());
        return mistakes;
    }

    std::string mistakesInCreative(const std::string& members) {
        return mistakesIn("{\"creatives\": {\n\"tea\": {\n" + members + "}}, \"placements\": {}}");
    }

    const std::filesystem::path folder_ =
        testing::TempDir() + "catalog-" + std::to_string(getpid());
    const std::filesystem::path file_ = folder_ / "catalog.json";
};

TEST_F(CatalogTest, NamesTheLineThatIsNotJson) {
    EXPECT_EQ(mistakesIn("{\n  \"creatives\": {},\n  placements\n}"),
              "3: expected JSON (syntax error)");
    EXPECT_EQ(mistakesIn("{}\n{}"), "2: expected nothing after the end of the JSON text");
    EXPECT_EQ(mistakesIn("{\n"), "2: expected more: the JSON text breaks off here");
    EXPECT_EQ(mistakesIn(""), "1: expected more: the JSON text breaks off here");
}

TEST_F(CatalogTest, NamesTheLineTheMemberAndWhatWasExpected) {
    const std::string good = "\"adTypeId\": 77, \"clickUrl\": \"/t\", \"picture\": \"tea.png\"";
    const struct {
        std::string members;
        std::string mistakes;
    } cases[] = {
        {good + ",\n\"clickURL\": \"/t\"",
         "4: creatives.tea.clickURL: unknown; expected one of adTypeId, clickUrl, picture, title, "
         "description, displayName"},
        {good + ",\n\"clickUrl\": \"/u\"",
         "4: creatives.tea.clickUrl: expected once, but line 3 has it too"},
        {good + ", \"title\": \"Tea\"", "3: creatives.tea.title: expected of native ads only"},
        {"\"adTypeId\": 2,\n\"clickUrl\": 7,\n\"picture\": [\n]",
         "3: creatives.tea.adTypeId: expected one of 1, 14, 15, 77, 79, 83, 84, not 2\n"
         "4: creatives.tea.clickUrl: expected an address, or a path that begins with \"/\", not 7\n"
         "5: creatives.tea.picture: expected a file name, not an array"},
        {"\"adTypeId\": 77.0,\n\"clickUrl\": \"landing/tea\",\n\"picture\": \"none.png\"",
         "3: creatives.tea.adTypeId: expected one of 1, 14, 15, 77, 79, 83, 84, not 77.0\n"
         "4: creatives.tea.clickUrl: expected an address, or a path that begins with \"/\", not "
         "\"landing/tea\"\n"
         "5: creatives.tea.picture: expected a file in " +
             (folder_ / "pictures").string() + ", not \"none.png\""},
        {"\"adTypeId\": 1, \"clickUrl\": \"app:x\", \"picture\": \"tea.png\",\n\"title\": \"\",\n"
         "\"description\": \"Green\"",
         "4: creatives.tea.title: expected a text, not \"\"\n"
         "2: creatives.tea.displayName: expected a text, found nothing"},
    };
    for (const auto& [members, mistakes] : cases)
        EXPECT_EQ(mistakesInCreative(members), mistakes);
    for (const char* picture : {"../tea.png", "tea.svg", "t a.png", "tea"}) {
        EXPECT_EQ(mistakesInCreative("\"adTypeId\": 77, \"clickUrl\": \"/t\", \"picture\": \"" +
                                     std::string(picture) + '"')
                      .find("3: creatives.tea.picture: expected the name of a .png, "),
                  0u);
    }
}

TEST_F(CatalogTest, NamesMistakesOfItsSectionsAndPlacements) {
    EXPECT_EQ(mistakesIn("[]"), "1: expected an object, not an array");
    EXPECT_EQ(mistakesIn("{\"creatives\": true,\n\"ads\": {}}"),
              "2: ads: unknown; expected one of creatives, placements\n"
              "1: placements: expected an object, found nothing\n"
              "1: creatives: expected an object, not true");
    EXPECT_EQ(mistakesIn("{\"creatives\": {}, \"placements\": {\"home\": [\n\"tea\",\n1],\n"
                         "\"home\": {}}}"),
              "4: placements.home: expected once, but line 1 has it too\n"
              "2: placements.home: expected the name of a creative, not \"tea\"\n"
              "3: placements.home: expected the name of a creative, not 1\n"
              "4: placements.home: expected an array of names of creatives, not an object");
}

TEST_F(CatalogTest, WarnsOfWhatWouldStopAnAppOrLookWrong) {
    const auto shipped = Catalog::defaultFile().parent_path() / "pictures";
    for (const char* picture : {"harbour-coffee-320x60.png", "paperlark-notes-300x250.jpg",
                                "fellside-trails-728x90.webp", "solstice-gardens-320x100.webp"})
        std::filesystem::copy(shipped / picture, folder_ / "pictures");
    std::ofstream(file_) << R"({"creatives": {
"blank": {"adTypeId": 77, "clickUrl": "/a b", "picture": "harbour-coffee-320x60.png"},
"small": {"adTypeId": 83, "clickUrl": "/", "picture": "harbour-coffee-320x60.png"},
"jpeg": {"adTypeId": 15, "clickUrl": "/", "picture": "paperlark-notes-300x250.jpg"},
"lossy": {"adTypeId": 14, "clickUrl": "/", "picture": "fellside-trails-728x90.webp"},
"alpha": {"adTypeId": 14, "clickUrl": "/", "picture": "solstice-gardens-320x100.webp"},
"native": {"adTypeId": 1, "clickUrl": "/", "picture": "harbour-coffee-320x60.png",
           "title": "T", "description": "D", "displayName": "N"},
"none": {"adTypeId": 77, "clickUrl": "/", "picture": "tea.png"}},
"placements": {"home bottom": []}})";
    const auto& warnings = Catalog::load(file_).warnings;
    const std::string expected[] = {
        "2: creatives.blank.clickUrl: stops the app: not a valid URL: \"/a b\"",
        ("3: creatives.small.picture: looks wrong: expected 320 × 100 pixels or a whole multiple "
         "of "
         "it, not 320 × 60"),
        ("4: creatives.jpeg.picture: looks wrong: expected 728 × 90 pixels or a whole multiple of "
         "it, not 300 × 250"),
        ("5: creatives.lossy.picture: looks wrong: expected 300 × 250 pixels or a whole multiple "
         "of "
         "it, not 728 × 90"),
        ("6: creatives.alpha.picture: looks wrong: expected 300 × 250 pixels or a whole multiple "
         "of "
         "it, not 320 × 100"),
        "9: creatives.none.picture: stops the app: not a PNG, JPEG or WebP picture",
        "10: placements.home bottom: stops the app that asks for it: not valid in a URL"};
    ASSERT_EQ(warnings.size(), std::size(expected));
    for (std::size_t i = 0; i < warnings.size(); ++i)
        EXPECT_EQ(warnings[i], file_.string() + ':' + expected[i]);
    EXPECT_TRUE(Catalog::load().warnings.empty());
}

TEST_F(CatalogTest, RefusesUnreadableFiles) {
    for (const std::string& file : {std::string("/nowhere/catalog.json"), folder_.string()}) {
        EXPECT_EQ(mistakesOf(file), file + ": expected a readable file");
    }
}

}  // namespace
