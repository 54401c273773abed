// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <httplib.h>
#include <sys/stat.h>

#include <fstream>

#include "adserver/AdServer.h"
#include "tests/Program.h"

using VexmoraSDK::AdServer;
using VexmoraSDK::Catalog;
using VexmoraSDK::Program;

namespace {

namespace fs = std::filesystem;

class ProgramTest : public testing::Test {
 protected:
    void SetUp() override {
        fs::create_directories(folder_ / "pictures");
        fs::copy(Catalog::defaultFile().parent_path() / "pictures/harbour-coffee-320x60.png",
                 folder_ / "pictures/tea.png");
    }

    void TearDown() override { fs::remove_all(folder_); }

    /// Replaces the catalogue with one whose placement "home" has one ad of that name.
    void offer(const std::string& name, const std::string& picture = "tea.png") {
        const fs::path fresh = folder_ / "fresh.json";
        std::ofstream(fresh) << "{\"creatives\": {\"" + name + "\": {\n\"adTypeId\": 77,\n" +
                                    "\"clickUrl\": \"/landing/tea\",\n\"picture\": \"" + picture +
                                    "\"}},\n\"placements\": {\"home\": [\"" + name + "\"]}}";
        fs::rename(fresh, file_);
    }

    const fs::path folder_ = testing::TempDir() + "adserver-" + std::to_string(getpid());
    const fs::path file_ = folder_ / "catalog.json";
};

TEST_F(ProgramTest, PrintsHelpAndOptionErrors) {
    const struct {
        std::vector<std::string> options;
        int status;
        std::string words;
    } cases[] = {
        {{"--version"}, 0, "vexmora-adserver " VEXMORA_VERSION "\n"},
        {{"--help"}, 0, "--catalog FILE"},
        {{"--port", "80a"}, 2, "--port: expected a number from 0 to 65535, not \"80a\""},
        {{"--prot"}, 2, "Try 'vexmora-adserver --help'"},
        {{"surplus"}, 2, "unexpected argument \"surplus\""},
        {{"--catalog", "/nowhere"}, 2, "/nowhere: expected a readable file"},
    };
    for (const auto& [options, status, words] : cases) {
        std::vector<std::string> command{VEXMORA_ADSERVER};
        command.insert(command.end(), options.begin(), options.end());
        Program program(command);
        EXPECT_NE(program.readAll().find(words), std::string::npos) << words;
        EXPECT_EQ(program.wait(), status) << words;
    }
}

TEST_F(ProgramTest, LogsRequestsAndReadsAChangedCatalogueAgainIfItIsUsable) {
    offer("tea");
    Program program({VEXMORA_ADSERVER, "--catalog", file_});
    const std::string address = program.readLabelled("Listening on ");
    const auto ask = [&] { httplib::Client(address).Get("/ads?container=home&types=77"); };

    ask();
    EXPECT_NE(program.readTo("GET ").find("GET /ads?container=home&types=77  ad tea"),
              std::string::npos);
    offer("coffee");
    program.readTo("catalogue read again");
    ask();
    EXPECT_NE(program.readTo("GET ").find("ad coffee"), std::string::npos);
    offer("cocoa", "missing.png");
    EXPECT_NE(program.readTo("the old one stays").find("catalog.json:4: creatives.cocoa.picture"),
              std::string::npos);
    ask();
    EXPECT_NE(program.readTo("GET ").find("ad coffee"), std::string::npos);
    fs::copy(folder_ / "pictures/tea.png", folder_ / "pictures/missing.png");
    program.readTo("catalogue read again");
    ask();
    EXPECT_NE(program.readTo("GET ").find("ad cocoa"), std::string::npos);
    EXPECT_EQ(program.end(), 0);
}

// The browser's clock stands still while it waits for the picture, so only a page that asks again
// sees what happens in that time.
TEST_F(ProgramTest, ShowsTheCatalogueAndTheLatestRequestsInABrowser) {
    offer("tea");
    const fs::path late = folder_ / "pictures/late.png";
    ASSERT_EQ(mkfifo(late.c_str(), 0600), 0);
    AdServer server(Catalog{{{77, "/landing/<late>", late}}, {}});
    Program browser({"chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                     "--no-first-run", "--disable-background-networking",
                     "--disable-component-update", "--disable-sync",
                     "--user-data-dir=" + (folder_ / "browser").string(),
                     "--virtual-time-budget=5000", "--dump-dom", server.address() + "/"});
    {
        std::ofstream picture(late);  // opens once the page asks for it
        httplib::Client(server.address()).Get("/ads?container=<b>home</b>&types=83,77");
        EXPECT_EQ(server.reload(file_), "");
        EXPECT_NE(server.reload("/nowhere/catalog.json"), "");
    }
    const std::string page = browser.readAll();
    EXPECT_EQ(browser.wait(), 0);
    for (const std::string words :
         {"<h3>tea</h3>", "src=\"/page/pictures/tea.png\"", "<li>home</li>", "\"adTypeId\": 77,",
          "<strong>&lt;b&gt;home&lt;/b&gt;</strong> accepts 83, 77",
          ">ad late, unknown placement</a>", "/nowhere/catalog.json: expected a readable file",
          ">fault-status-500<"}) {
        EXPECT_NE(page.find(words), std::string::npos) << words << "\nin\n" << page;
    }
}

}  // namespace
