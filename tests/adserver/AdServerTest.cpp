// SPDX-License-Identifier: MIT
#include "adserver/AdServer.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <boost/json.hpp>
#include <future>
#include <memory>
#include <set>

using VexmoraSDK::AdServer;
using VexmoraSDK::Catalog;

namespace json = boost::json;

namespace {

class AdServerTest : public testing::Test {
 protected:
    AdServerTest() {
        client_.set_keep_alive(true);
        client_.set_url_encode(false);
    }

    httplib::Result ask(const std::string& container, const std::string& types = "77") {
        return client_.Get("/ads?container=" + container + "&types=" + types);
    }

    json::array ads(const std::string& container, const std::string& types = "77") {
        return json::parse(ask(container, types)->body).as_array();
    }

    std::string picture(const json::value& ad) { return text(ad, "bannerUrl"); }

    httplib::Result fetch(const std::string& address) {
        EXPECT_EQ(address.find(server_->address() + '/'), 0u) << address;
        return client_.Get(address.substr(server_->address().size()));
    }

    static std::string text(const json::value& ad, const char* member) {
        return json::value_to<std::string>(ad.at(member));
    }

    std::unique_ptr<AdServer> server_ = std::make_unique<AdServer>(Catalog::load());
    httplib::Client client_{server_->address()};
};

TEST_F(AdServerTest, ServesTheAdsOfAPlacementInTurn) {
    std::vector<std::string> pictures;
    for (int i = 0; i < 4; ++i) {
        const json::array answer = ads("home-bottom", "83");
        ASSERT_EQ(answer.size(), 1u);
        EXPECT_EQ(answer[0].at("adTypeId"), 83);
        pictures.push_back(picture(answer[0]));
    }
    EXPECT_EQ(std::set(pictures.begin(), pictures.begin() + 3).size(), 3u);
    EXPECT_EQ(pictures[3], pictures[0]);

    EXPECT_TRUE(ads("home-bottom", "14").empty()) << "of a type that the placement has not";
}

TEST_F(AdServerTest, ServesOtherContainersTheFirstAcceptedTypeOfTheCatalogue) {
    EXPECT_EQ(ads("elsewhere", "79,15,14").at(0).at("adTypeId"), 15);
    EXPECT_EQ(ads("elsewhere", "14,15").at(0).at("adTypeId"), 14);
    EXPECT_FALSE(text(ads("elsewhere", "1").at(0), "description").empty());
    EXPECT_TRUE(ads("elsewhere", "79").empty());
    EXPECT_TRUE(ads("elsewhere", "").empty());
}

TEST_F(AdServerTest, ServesPicturesOfTwiceTheSizeOnlyToPlacementsThatListThem) {
    const auto isSharp = [&](const json::value& ad) {
        return picture(ad).find("-640x120") != std::string::npos;
    };
    EXPECT_TRUE(isSharp(ads("home-bottom-2x").at(0)));
    for (int i = 0; i < 6; ++i)
        EXPECT_FALSE(isSharp(ads("elsewhere").at(0)));
}

TEST_F(AdServerTest, WarnsOfUnknownFaultsAndPlacements) {
    std::vector<std::string> warnings;
    const AdServer::Options options{.onAnswer = [&](const AdServer::Answer& answer) {
        warnings.push_back(answer.outcome.substr(0, 6) + ", " + answer.warning);
    }};
    auto server = std::make_unique<AdServer>(Catalog::load(), options);
    httplib::Client client(server->address());
    for (const char* container : {"fault-stal", "fault-picture-stal"}) {
        const auto refused = client.Get(std::string("/ads?types=77&container=") + container);
        EXPECT_EQ(refused->status, 400);
        EXPECT_EQ(refused->get_header_value("Content-Type"), "text/plain; charset=utf-8");
        EXPECT_NE(refused->body.find(container), std::string::npos);
    }
    client.Get("/ads?types=77&container=home-botom");
    server.reset();  // The threads that write the warnings end here.
    EXPECT_EQ(warnings, (std::vector<std::string>{"status, unknown fault", "status, unknown fault",
                                                  "ad har, unknown placement"}));
}

TEST_F(AdServerTest, ServesThePictureAndTheLandingPageOfEveryAd) {
    const std::map<std::string, std::string> beginnings{
        {"image/png", "\x89PNG"}, {"image/jpeg", "\xff\xd8\xff"}, {"image/webp", "RIFF"}};
    std::set<std::string> formats;
    for (const char* types : {"1", "14", "15", "77", "83", "84"}) {
        const json::array answer = ads("fault-three", types);
        EXPECT_EQ(answer.size(), 3u);
        for (const json::value& ad : answer) {
            const auto picture = fetch(this->picture(ad));
            const std::string format = picture->get_header_value("Content-Type");
            EXPECT_EQ(picture->body.find(beginnings.at(format)), 0u) << this->picture(ad);
            formats.insert(format);
            EXPECT_EQ(fetch(text(ad, "clickUrl"))->get_header_value("Content-Type"), "text/html");
        }
    }
    EXPECT_EQ(formats.size(), beginnings.size());
}

TEST_F(AdServerTest, LetsClientsCachePicturesButNoAds) {
    EXPECT_EQ(ask("home-bottom")->get_header_value("Cache-Control"), "no-store");
    const auto path = picture(ads("home-bottom").at(0)).substr(server_->address().size());
    const auto first = client_.Get(path);
    EXPECT_EQ(first->get_header_value("Cache-Control"), "max-age=60");
    const auto tag = first->get_header_value("ETag");
    const auto again = client_.Get(path, {{"If-None-Match", tag}});
    EXPECT_EQ(again->status, 304);
    EXPECT_EQ(again->get_header_value("ETag"), tag);
    EXPECT_EQ(again->body, "");
    EXPECT_EQ(client_.Get(path, {{"If-None-Match", "\"other\""}})->body, first->body);
}

TEST_F(AdServerTest, KeepsAddressesByteForByte) {
    EXPECT_EQ(text(ads("home-bottom").at(0), "clickUrl"),
              server_->address() + "/landing/harbour-coffee?sig=%41%c3&from=home");

    ask("a%41+%c3|{b}", "77,,x");
    const auto requests = server_->requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[1].method, "GET");
    EXPECT_EQ(requests[1].target, "/ads?container=a%41+%c3|{b}&types=77,,x");
    EXPECT_EQ(requests[1].headers.at("host"), server_->address().substr(strlen("http://")));
    EXPECT_EQ(requests[1].clientPort, requests[0].clientPort) << "connections are kept";
}

TEST(StalledRequestsTest, StallUntilTheServerEndsAndDelayNoOthers) {
    std::vector<std::future<httplib::Result>> stalled;  // They end once the server is destroyed.
    AdServer server(Catalog::load());
    for (const char* how : {"stall", "stall-status", "stall-headers", "stall-body",
                            "stall-handshake", "stall-connect"}) {
        for (int i = 0; i < 10; ++i) {
            stalled.push_back(std::async(std::launch::async, [address = server.address(), how] {
                httplib::Client client(address);
                client.set_follow_location(true);
                client.set_read_timeout(std::chrono::hours(1));
                return client.Get(std::string("/ads?types=77&container=fault-") + how);
            }));
        }
    }
    ASSERT_TRUE(server.waitForRequests(stalled.size()));
    EXPECT_EQ(httplib::Client(server.address()).Get("/ads?types=77&container=home-bottom")->status,
              200);
    // A response that does not stall arrives within this time.
    EXPECT_EQ(stalled.front().wait_for(std::chrono::milliseconds(200)),
              std::future_status::timeout);
    for (const auto& request : stalled)
        EXPECT_EQ(request.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
}

TEST_F(AdServerTest, RefusesAPortInUse) {
    const AdServer second(Catalog::load(), {.port = server_->port()});
    EXPECT_EQ(second.port(), 0);
    EXPECT_EQ(ask("home-bottom")->status, 200);
}

}  // namespace
