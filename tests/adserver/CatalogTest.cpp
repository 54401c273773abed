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

    /// What loading says of a catalogue that is written so, without the file's name.
    std::string complaintsAbout(const std::string& text) {
        std::ofstream(file_) << text;
        std::string error;
        EXPECT_FALSE(Catalog::load(file_, error)) << text;
        std::string complaints;
        for (std::size_t at = 0; at < error.size();) {
            EXPECT_EQ(error.find(file_.string(), at), at) << error;
            const std::size_t end = std::min(error.find('\n', at), error.size() - 1) + 1;
            at += file_.string().size() + 1;
            complaints += error.substr(at, end - at);
            at = end;
        }
        return complaints;
    }

    std::string complaintAboutCreative(const std::string& members) {
        return complaintsAbout("{\"creatives\": {\n\"tea\": {\n" + members +
                               "}}, \"placements\": {}}");
    }

    const std::filesystem::path folder_ =
        testing::TempDir() + "catalog-" + std::to_string(getpid());
    const std::filesystem::path file_ = folder_ / "catalog.json";
};

TEST_F(CatalogTest, NamesTheLineThatIsNotJson) {
    EXPECT_EQ(complaintsAbout("{\n  \"creatives\": {},\n  placements\n}"),
              "3: expected JSON (syntax error)");
    EXPECT_EQ(complaintsAbout("{}\n{}"), "2: expected nothing after the end of the JSON text");
    EXPECT_EQ(complaintsAbout("{\n"), "2: expected more: the JSON text breaks off here");
    EXPECT_EQ(complaintsAbout(""), "1: expected more: the JSON text breaks off here");
}

TEST_F(CatalogTest, NamesTheLineThePlaceAndWhatWasExpectedThere) {
    const std::string good = "\"adTypeId\": 77, \"clickUrl\": \"/t\", \"picture\": \"tea.png\"";
    const struct {
        std::string members;
        std::string complaint;
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
    for (const auto& [members, complaint] : cases)
        EXPECT_EQ(complaintAboutCreative(members), complaint);
    for (const char* picture : {"../tea.png", "tea.svg", "t a.png", "tea"}) {
        EXPECT_EQ(complaintAboutCreative("\"adTypeId\": 77, \"clickUrl\": \"/t\", \"picture\": \"" +
                                         std::string(picture) + '"')
                      .find("3: creatives.tea.picture: expected the name of a .png, "),
                  0u);
    }
}

TEST_F(CatalogTest, NamesMistakesOfItsSectionsAndPlacements) {
    EXPECT_EQ(complaintsAbout("[]"), "1: expected an object, not an array");
    EXPECT_EQ(complaintsAbout("{\"creatives\": true,\n\"ads\": {}}"),
              "2: ads: unknown; expected one of creatives, placements\n"
              "1: placements: expected an object, found nothing\n"
              "1: creatives: expected an object, not true");
    EXPECT_EQ(complaintsAbout("{\"creatives\": {}, \"placements\": {\"home\": [\n\"tea\",\n1],\n"
                              "\"home\": {}}}"),
              "4: placements.home: expected once, but line 1 has it too\n"
              "2: placements.home: expected the name of a creative, not \"tea\"\n"
              "3: placements.home: expected the name of a creative, not 1\n"
              "4: placements.home: expected an array of names of creatives, not an object");
}

TEST_F(CatalogTest, RefusesWhatIsNoReadableFile) {
    for (const std::string& file : {std::string("/nowhere/catalog.json"), folder_.string()}) {
        std::string error;
        EXPECT_FALSE(Catalog::load(file, error));
        EXPECT_EQ(error, file + ": expected a readable file");
    }
}

}  // namespace
