#include "adserver/Catalog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

using VexmoraSDK::Catalog;

namespace {

class CatalogTest : public testing::Test {
 protected:
    /// What loading says of a catalogue that is written so.
    std::string complaintAbout(const std::string& text) {
        std::ofstream(file_) << text;
        std::string error;
        EXPECT_FALSE(Catalog::load(file_, error)) << text;
        return error;
    }

    void TearDown() override { std::filesystem::remove(file_); }

    const std::string file_ = testing::TempDir() + "catalog-" + std::to_string(getpid()) + ".json";
};

TEST_F(CatalogTest, NamesTheLineThatIsNotJson) {
    EXPECT_EQ(complaintAbout("{\n  \"creatives\": {},\n  placements\n}").find(file_ + ":3: "), 0u);
    EXPECT_EQ(complaintAbout("{}\n{}").find(file_ + ":2: "), 0u);
    EXPECT_EQ(complaintAbout("{\n").find(file_ + ":2: "), 0u);
}

TEST_F(CatalogTest, NamesThePlaceAndWhatWasExpectedThere) {
    const auto withCreative = [](const std::string& members) {
        return "{\"creatives\": {\"tea\": {" + members + "}}, \"placements\": {}}";
    };
    EXPECT_EQ(complaintAbout("[]"), file_ + ": expected an object");
    EXPECT_EQ(complaintAbout("{\"creatives\": 1}"), file_ + ": creatives: expected an object");
    EXPECT_EQ(complaintAbout(withCreative("\"adTypeId\": 2")),
              file_ + ": creatives.tea.adTypeId: expected one of 1, 14, 15, 77, 79, 83, 84");
    EXPECT_EQ(complaintAbout(withCreative("\"adTypeId\": 77")),
              file_ + ": creatives.tea.clickUrl: expected a text");
    for (const std::string picture : {"none.png", "../tea.png", "tea.svg", "t a.png"}) {
        EXPECT_NE(complaintAbout(withCreative("\"adTypeId\": 77, \"clickUrl\": \"/landing/tea\","
                                              "\"picture\": \"" +
                                              picture + "\""))
                      .find(": creatives.tea.picture: expected a .png"),
                  std::string::npos);
    }
    EXPECT_EQ(complaintAbout("{\"creatives\": {}, \"placements\": {\"home\": [\"tea\"]}}"),
              file_ + ": placements.home: expected the name of a creative, not \"tea\"");
}

TEST_F(CatalogTest, RefusesAFileThatIsNotThere) {
    std::string error;
    EXPECT_FALSE(Catalog::load("/nowhere/catalog.json", error));
    EXPECT_EQ(error, "/nowhere/catalog.json: expected a readable file");
}

}  // namespace
