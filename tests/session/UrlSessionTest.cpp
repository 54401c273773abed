// SPDX-License-Identifier: MIT
#include "tests/session/UrlSessionTest.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <latch>
#include <map>
#include <semaphore>
#include <set>
#include <vector>

#include "VexmoraSDK/platform/MainQueue.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/session/RudeServer.h"
#include "tests/session/StalledResolver.h"

namespace VexmoraSDK::platform {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The open descriptors and what they stand for, as another may get the number of a closed one.
std::map<int, ino_t> descriptors() {
    std::map<int, ino_t> descriptors;
    struct stat status;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        if (fstat(descriptor, &status) == 0) descriptors.emplace(descriptor, status.st_ino);
    return descriptors;
}

/// The port of the other end of a TCP connection; 0 for any other descriptor.
int peerPort(int descriptor) {
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    const bool isConnection =
        getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) == 0 &&
        peer.sin_family == AF_INET;
    return isConnection ? ntohs(peer.sin_port) : 0;
}

std::set<int> connectionsTo(int port) {
    std::set<int> connections;
    for (const auto& [descriptor, inode] : descriptors())
        if (peerPort(descriptor) == port) connections.insert(descriptor);
    return connections;
}

TEST_F(UrlSessionTest, DeliversTheBodyOfAnyHttpResponseOnAnotherThread) {
    const Outcome ad = fetch(ads("home-bottom"));
    EXPECT_FALSE(ad.error);
    EXPECT_EQ(ad.response.value().statusCode, 200);
    EXPECT_THAT(ad.text(), HasSubstr("adTypeId"));
    EXPECT_NE(ad.thread, std::this_thread::get_id());

    const Outcome page = fetch(ads("fault-status-404"));
    EXPECT_EQ(page.response.value().statusCode, 404);
    EXPECT_THAT(page.text(), HasSubstr("Error 404"));

    EXPECT_EQ(fetch(ads("fault-redirect-304")).response.value().statusCode, 304);

    for (const auto* container : {"fault-status-204", "fault-empty-body"}) {
        const Outcome empty = fetch(ads(container));
        EXPECT_FALSE(empty.error) << container;
        EXPECT_EQ(empty.text(), "") << container;
    }
}

TEST_F(UrlSessionTest, ReportsATruncatedResponseAsATransportError) {
    expectTransportError(ads("fault-refused"));
    expectTransportError(ads("fault-cut-short"));
    const std::string provisional = "HTTP/1.1 100 Continue\r\n\r\n";
    const std::string ok = "HTTP/1.1 200 OK\r\n";
    for (const auto& answer :
         {provisional, provisional + ok, ok + "Content-Length: 3x\r\n\r\nabc"}) {
        const RudeServer rude(answer);
        expectTransportError(rude.address());
    }
    RudeServer chunks(ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\nTrailer: x\r\n\r\n");
    EXPECT_EQ(fetch(chunks.address()).text(), "abc");
}

TEST_F(UrlSessionTest, DecodesGzipBodiesOfSeveralMembers) {
    using namespace std::literals;
    const auto abc = "\x1f\x8b\b\0\0\0\0\0\2\3KLJ\6\0\xc2\x41\x24\x35\3\0\0\0"s;
    const auto head = "HTTP/1.1 200 OK\r\nContent-Encoding: X-GZip\r\n\r\n"s;
    const RudeServer two(head + abc + abc);
    EXPECT_EQ(fetch(two.address()).text(), "abcabc");
    const RudeServer oneAndABit(head + abc + abc.substr(0, 5));
    expectTransportError(oneAndABit.address());
    const RudeServer oneAndWords(head + abc + "and so on");
    expectTransportError(oneAndWords.address());
}

TEST_F(UrlSessionTest, BoundsTheDecodedBodyToo) {
    using namespace std::literals;
    const RudeServer rude(
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n"
        "\x1f\x8b\b\0\0\0\0\0\2\3\xed\xc1\x31\1\0\0\0\xc2\xa0\xf5\x4f\x6d\f\x1f\xa0\0\0\0\0\0"
        "\0\0\0\0\0\0\xe0\x6f\x9e\x92\xa7\x6a\xe0\x2e\0\0"s);
    limits.maxBodyBytes = 12'000;
    EXPECT_EQ(fetch(rude.address()).text().size(), 12'000u);
    limits.maxBodyBytes = 11'999;
    expectTransportError(rude.address());
}

TEST_F(UrlSessionTest, DeliversABodyInAnyOtherEncodingAsItIs) {
    for (const auto* encoding : {"utf-8", "none", "", "aws-chunked", "identity, origami"}) {
        const RudeServer rude(std::string("HTTP/1.1 200 OK\r\nContent-Encoding: ") + encoding +
                              "\r\n\r\nabc");
        EXPECT_EQ(fetch(rude.address()).text(), "abc") << encoding;
    }
}

TEST_F(UrlSessionTest, FetchesOnlyAbsoluteHttpUrls) {
    const std::string place = "127.0.0.1:" + std::to_string(server.port());
    for (const std::string& address :
         {std::string("127.0.0.1"), "//" + place + "/landing/", "http:/" + place + "/landing/",
          "http:" + place + "/landing/", "ftp://" + place + "/landing/", std::string("landing/"),
          std::string("file:///etc/hostname")}) {
        expectTransportError(address);
    }
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(UrlSessionTest, FollowsNoRedirectFromHttpsToHttp) {
    const std::string folder = testing::TempDir() + "vexmora-https-" + std::to_string(getpid());
    const std::string key = folder + "-key";
    const std::string certificate = folder + "-certificate";
    const std::string make =
        "openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=127.0.0.1 -keyout " + key + " -out " +
        certificate + " 2>/dev/null";
    ASSERT_EQ(std::system(make.c_str()), 0);
    setenv("VEXMORA_TEST_CERTIFICATE", certificate.c_str(), 1);
    httplib::SSLServer secure(certificate.c_str(), key.c_str());
    const auto redirectTo = [](const std::string& location) {
        return [location](const httplib::Request&, httplib::Response& response) {
            response.set_redirect(location);
        };
    };
    secure.Get("/body", [](const httplib::Request&, httplib::Response& response) {
        response.set_content("body", "text/plain");
    });
    secure.Get("/to-https", redirectTo("/body"));
    secure.Get("/to-http", redirectTo(ads("home-bottom")));
    const auto place = "https://127.0.0.1:" + std::to_string(secure.bind_to_any_port("127.0.0.1"));
    std::thread thread([&secure] { secure.listen_after_bind(); });
    EXPECT_EQ(fetch(place + "/to-https").text(), "body");
    expectTransportError(place + "/to-http");
    EXPECT_TRUE(server.requests().empty());
    secure.stop();
    thread.join();
}

TEST_F(UrlSessionTest, TimesOutWhenAServerStallsBeforeOrAfterItConnects) {
    limits.idleTimeout = std::chrono::seconds(1);
    limits.connectTimeout = std::chrono::seconds(1);
    std::vector<std::pair<std::string, std::future<Outcome>>> stalled;
    for (const auto* fault : {"stall", "stall-body", "stall-connect", "stall-handshake"}) {
        const auto address = ads(std::string("fault-") + fault);
        auto [task, future] = taskFor(address);
        task.resume();
        stalled.emplace_back(address, std::move(future));
    }
    for (auto& [address, future] : stalled) {
        const Outcome outcome = outcomeOf(std::move(future));
        expectTransportError(address, outcome);
        EXPECT_EQ(outcome.error->code(), CURLE_OPERATION_TIMEDOUT) << address;
    }
}

TEST_F(UrlSessionTest, TimesOutWhenAServerGoesOnForTooLong) {
    limits.totalTimeout = std::chrono::milliseconds(300);
    expectTransportError(ads("fault-stall-body"));
}

TEST_F(UrlSessionTest, RefusesABodyBeyondTheLimit) {
    limits.maxBodyBytes = 1 << 20;
    const auto expectTooLarge = [&](const std::string& address) {
        const Outcome outcome = fetch(address);
        expectTransportError(address, outcome);
        EXPECT_EQ(told(outcome, kLocalizedDescriptionKey), "Maximum file size exceeded");
    };
    expectTooLarge(ads("fault-endless"));
    // Three bytes more than words of 31, 32, 63 and 64 bits can say.
    for (const std::string length :
         {"2147483651", "4294967299", "9223372036854775811", "18446744073709551619"}) {
        SCOPED_TRACE(length);
        const RudeServer boastful("HTTP/1.1 200 OK\r\nContent-Length: " + length + "\r\n\r\nabc");
        expectTooLarge(boastful.address());
    }
    // What stands behind the sizes of chunks counts, in one chunk or in many.
    const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    const std::string half = "1;" + std::string(600'000, 'x') + "\r\na\r\n";
    const RudeServer modest(head + half + "0\r\n\r\n");
    EXPECT_EQ(fetch(modest.address()).text(), "a");
    const RudeServer talkative(head + half + half + "0\r\n\r\n");
    expectTooLarge(talkative.address());
    const RudeServer restless(head + "1;" + std::string(8'000'000, 'x'));
    expectTooLarge(restless.address());
}

TEST_F(UrlSessionTest, RefusesHeadersBeyondTheLimit) {
    limits.maxHeaderBytes = 10'000;
    const auto filler = "X: " + std::string(6'000, 'x') + "\r\n";
    const RudeServer modest("HTTP/1.1 200 OK\r\n" + filler + "Content-Length: 0\r\n\r\n");
    EXPECT_FALSE(fetch(modest.address()).error);
    const RudeServer talkative("HTTP/1.1 103 Early Hints\r\n" + filler + "\r\nHTTP/1.1 200 OK\r\n" +
                               filler + "Content-Length: 0\r\n\r\n");
    const RudeServer restless("HTTP/1.1 302 Found\r\nLocation: /\r\n" + filler + "\r\n");
    std::string trailers;
    while (trailers.size() < 12'000)
        trailers += "X: and so on\r\n";
    const RudeServer lingering("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n" +
                               trailers + "\r\n");
    for (const auto* rude : {&talkative, &restless, &lingering}) {
        const Outcome outcome = fetch(rude->address());
        expectTransportError(rude->address(), outcome);
        EXPECT_EQ(told(outcome, kLocalizedDescriptionKey), "Maximum file size exceeded");
    }
}

TEST_F(UrlSessionTest, LetsASlowNameResolutionDelayNoOtherTransfer) {
    limits.connectTimeout = std::chrono::milliseconds(100);
    StalledResolver resolver;
    expectTransportError(std::string("http://") + StalledResolver::kName + "/");
    EXPECT_THAT(fetch(ads("home-bottom")).text(), HasSubstr("adTypeId"));
}

TEST_F(UrlSessionTest, FetchesBesideAServerThatStalls) {
    auto slow = std::make_optional<AdServer>(Catalog::load());
    auto [task, stalled] = taskFor(slow->address() + "/ads?container=fault-stall-body&types=77");
    task.resume();
    ASSERT_TRUE(slow->waitForRequests(1));
    EXPECT_THAT(fetch(ads("home-bottom")).text(), HasSubstr("adTypeId"));
    EXPECT_EQ(stalled.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    slow.reset();
    EXPECT_TRUE(outcomeOf(std::move(stalled)).error);
}

TEST_F(UrlSessionTest, LetsBlockedCompletionsDelayNoTransfer) {
    constexpr int kMoreThanCompleteAtOnce = 8;
    std::promise<void> released;
    const auto go = released.get_future().share();
    std::counting_semaphore<> completions(0);
    for (int i = 1; i <= kMoreThanCompleteAtOnce; ++i) {
        UrlSession::shared()
            .dataTask(Url::fromString(ads("home-bottom")).value(),
                      [&completions, go](auto, auto, auto) {
                          go.wait();
                          completions.release();
                      })
            .resume();
        EXPECT_TRUE(server.waitForRequests(static_cast<std::size_t>(i)));
    }
    released.set_value();
    for (int i = 1; i <= kMoreThanCompleteAtOnce; ++i)
        EXPECT_TRUE(completions.try_acquire_for(kDeadline));
}

TEST_F(UrlSessionTest, StartsNoTransferWhileTooManyCompletionsWait) {
    limits.maxConcurrentTransfers = 8;
    constexpr std::size_t kForOneOrigin = 4;
    std::promise<void> released;
    const auto go = released.get_future().share();
    std::counting_semaphore<> completions(0);
    for (int i = 0; i < 12; ++i) {
        UrlSession::shared()
            .dataTask(Url::fromString(ads("home-bottom")).value(),
                      [&completions, go](auto, auto, auto) {
                          go.wait();
                          completions.release();
                      })
            .resume();
    }
    ASSERT_TRUE(server.waitForRequests(kForOneOrigin));
    AdServer another{Catalog::load()};
    auto [task, later] = taskFor(another.address() + "/ads?container=home-bottom&types=77");
    task.resume();
    EXPECT_TRUE(another.waitForRequests(1)) << "the places of one origin hold up another";
    EXPECT_EQ(server.requests().size(), kForOneOrigin);
    released.set_value();
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(completions.try_acquire_for(kDeadline));
    EXPECT_FALSE(outcomeOf(std::move(later)).error);
}

TEST_F(UrlSessionTest, StartsNoTransferWhileCompletionsHoldTooManyBytes) {
    limits.maxHeldBodyBytes = 1;
    std::promise<void> released;
    const auto go = released.get_future().share();
    std::promise<void> began;
    UrlSession::shared()
        .dataTask(Url::fromString(ads("home-bottom")).value(),
                  [&began, go](auto, auto, auto) {
                      began.set_value();
                      go.wait();
                  })
        .resume();
    ASSERT_EQ(began.get_future().wait_for(kDeadline), std::future_status::ready);
    auto [task, held] = taskFor(ads("home-bottom"));
    task.resume();
    for (int i = 0; i < 200; ++i)
        expectTransportError("relative");  // Other completions go on meanwhile.
    EXPECT_EQ(server.requests().size(), 1u);
    released.set_value();
    EXPECT_FALSE(outcomeOf(std::move(held)).error);
}

TEST_F(UrlSessionTest, LetsBodiesGrowTogetherOnlyWhileThereIsRoomForThem) {
    constexpr std::size_t kSize = 100'000;
    limits.maxHeldBodyBytes = 4 * kSize;
    limits.maxContestedBodyBytes = 1'000;
    std::latch all(8);
    std::promise<void> released;
    const auto go = released.get_future().share();
    HttpServer host;
    host.Get("/large", [&, go](const httplib::Request&, httplib::Response&) {
        all.arrive_and_wait();
        HttpServer::connection().sendAll("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" +
                                         std::string(kSize - 1, 'x'));
        go.wait();
        HttpServer::connection().sendAll("x");
    });
    host.Get("/small", [](const httplib::Request&, httplib::Response& response) {
        response.set_content(std::string(1'000, 'x'), "text/plain");
    });
    const auto address = "http://127.0.0.1:" + std::to_string(host.bind(0));
    host.serve();
    std::atomic<int> whole = 0;
    std::counting_semaphore<> ended(0);
    for (int i = 0; i < 8; ++i) {
        resume(address + "/large", TaskPriority::low, [&](auto body, auto, auto) {
            if (body) ++whole;
            ended.release();
        });
    }
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(ended.try_acquire_for(kDeadline)) << "there is no room for five";
    EXPECT_EQ(whole, 0);
    EXPECT_FALSE(fetch(address + "/small").error);
    released.set_value();
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(ended.try_acquire_for(kDeadline));
    EXPECT_EQ(whole, 4);
}

TEST_F(UrlSessionTest, LetsCompletionsOfPicturesHoldUpNoAdsAndNoOtherOrigin) {
    std::promise<void> someReleased;
    std::promise<void> allReleased;
    std::counting_semaphore<> ended(0);
    std::counting_semaphore<> otherEnded(0);
    // Without a transfer, they all wait for their completion at once.
    const auto complete = [&](std::promise<void>& released, int times) {
        const auto go = released.get_future().share();
        for (int i = 0; i < times; ++i) {
            resume("ftp://a/picture", TaskPriority::low, [&ended, go](auto, auto, auto) {
                go.wait();
                ended.release();
            });
        }
    };
    complete(someReleased, 2);
    complete(allReleased, 20);
    resume("ftp://b/picture", TaskPriority::low,
           [&otherEnded](auto, auto, auto) { otherEnded.release(); });
    // The thread that completes the first is there for the second too.
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(fetch(ads("home-bottom")).text(), HasSubstr("adTypeId"));
    someReleased.set_value();
    EXPECT_TRUE(otherEnded.try_acquire_for(kDeadline)) << "one of the next two has to be this one";
    allReleased.set_value();
    for (int i = 0; i < 22; ++i)
        EXPECT_TRUE(ended.try_acquire_for(kDeadline));
}

TEST_F(UrlSessionTest, LetsSlowPicturesHoldUpNoAdRequest) {
    auto slow = std::make_optional<AdServer>(Catalog::load());
    std::counting_semaphore<> pictures(0);
    for (int i = 0; i < 80; ++i) {
        UrlSession::shared()
            .dataTask(
                Url::fromString(slow->address() + "/ads?container=fault-stall-body&types=77")
                    .value(),
                [&pictures](auto, auto, auto) { pictures.release(); }, TaskPriority::low)
            .resume();
    }
    EXPECT_TRUE(slow->waitForRequests(28));
    EXPECT_THAT(fetch(ads("home-bottom")).text(), HasSubstr("adTypeId"));
    const Outcome ad = fetch(slow->address() + "/ads?container=home-bottom&types=77");
    EXPECT_THAT(ad.text(), HasSubstr("adTypeId"));
    EXPECT_EQ(slow->requests().size(), 29u);
    slow.reset();
    for (int i = 0; i < 80; ++i)
        EXPECT_TRUE(pictures.try_acquire_for(kDeadline));
}

TEST_F(UrlSessionTest, UsesAResponseThatWasStoredWhileARequestWaited) {
    limits.maxConcurrentTransfers = 2;  // One origin has half of them.
    const auto picture = server.address() + "/creatives/harbour-coffee-320x60.png";
    std::vector<std::future<Outcome>> outcomes;
    for (int i = 0; i < 3; ++i) {
        auto [task, future] = taskFor(picture);
        task.resume();
        outcomes.push_back(std::move(future));
    }
    for (auto& outcome : outcomes)
        EXPECT_GT(outcomeOf(std::move(outcome)).text().size(), 0u);
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(UrlSessionTest, KeepsAtMostSixteenIdleConnections) {
    constexpr int kAtOnce = 28;
    constexpr int kAll = kAtOnce + 5;
    std::latch allAreThere(kAtOnce);
    std::atomic<int> requests = 0;
    std::counting_semaphore<> answers(0);
    std::counting_semaphore<> completions(0);
    std::promise<void> released;
    const auto go = released.get_future().share();
    HttpServer host;
    host.Get("/", [&](const httplib::Request&, httplib::Response& response) {
        if (++requests <= kAtOnce) allAreThere.arrive_and_wait();
        response.set_content("x", "text/plain");
    });
    host.set_logger([&](const auto&, const auto&) { answers.release(); });
    const int port = host.bind(0);
    host.serve();
    for (int i = 0; i < kAll; ++i) {
        resume("http://127.0.0.1:" + std::to_string(port) + "/", TaskPriority::low,
               [&completions, go](auto, auto, auto) {
                   go.wait();
                   completions.release();
               });
    }
    for (int i = 0; i < kAtOnce; ++i)
        EXPECT_TRUE(answers.try_acquire_for(kDeadline));
    fetch(ads("home-bottom"));  // The loop has received all answers that were sent before.
    released.set_value();
    for (int i = 0; i < kAll; ++i)
        EXPECT_TRUE(completions.try_acquire_for(kDeadline));
    EXPECT_LE(connectionsTo(port).size() + connectionsTo(server.port()).size(), 16u);
    EXPECT_EQ(requests, kAll);
}

TEST_F(UrlSessionTest, LeavesNoDescriptorOpenInProgramsThatTheHostStarts) {
    const auto before = descriptors();
    fetch(ads("home-bottom"));
    auto resolver = std::make_optional<StalledResolver>();
    auto [task, stalled] = taskFor(std::string("http://") + StalledResolver::kName + "/");
    task.resume();
    StalledResolver::waitForCaller();
    fetch(ads("home-bottom"));  // Behind this, the turn that began the other transfer has ended.
    const auto connections = connectionsTo(server.port());
    int seen = 0;
    for (const auto& [descriptor, inode] : descriptors()) {
        const bool isServers = !connections.contains(descriptor) && peerPort(descriptor) != 0;
        const auto known = before.find(descriptor);
        const bool wasOpen = known != before.end() && known->second == inode;
        if (wasOpen || isServers) continue;
        EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC) << descriptor;
        ++seen;
    }
    EXPECT_GE(seen, 3);  // These are a connection, and a pair of sockets to resolve a name.
    resolver.reset();
    EXPECT_TRUE(outcomeOf(std::move(stalled)).error);
}

TEST_F(UrlSessionTest, OpensNoMoreConnectionsThanThereAreTransfersAtOnce) {
    limits.maxConcurrentTransfers = 4;  // One origin has half of them.
    std::vector<std::future<Outcome>> outcomes;
    for (int i = 0; i < 6; ++i) {
        auto [task, future] = taskFor(ads("fault-slow"));
        task.resume();
        outcomes.push_back(std::move(future));
    }
    for (auto& outcome : outcomes)
        EXPECT_FALSE(outcomeOf(std::move(outcome)).error);
    std::set<int> connections;
    for (const auto& request : server.requests())
        connections.insert(request.clientPort);
    EXPECT_EQ(connections.size(), 2u);
}

TEST_F(UrlSessionTest, SendsTheUrlAsItIsWritten) {
    const std::string target = "/creatives/%41/../%c3/./x?q=a,b&s=%41%C3'(;)";
    fetch(server.address() + target + "#not-sent");
    EXPECT_EQ(server.requests().back().target, target);
}

TEST_F(UrlSessionTest, SendsBackTheCookiesOfAHost) {
    HttpServer host;
    host.Get("/", [](const httplib::Request& request, httplib::Response& response) {
        // Longer than 32 bits can say.
        response.set_header("Set-Cookie", "until=2100; Expires=Fri, 01 Jan 2100 00:00:00 GMT");
        response.set_header("Set-Cookie", "age=5; Max-Age=4294967296");
        response.set_header("Set-Cookie", "visitor=17");
        response.set_content(request.get_header_value("Cookie"), "text/plain");
    });
    const auto address = "http://127.0.0.1:" + std::to_string(host.bind(0)) + "/";
    host.serve();
    EXPECT_EQ(fetch(address).text(), "");
    EXPECT_EQ(fetch(address).text(), "visitor=17; until=2100; age=5");
}

TEST_F(UrlSessionTest, DropsTheOldestOfTooManyCookies) {
    limits.maxCookies = 100;
    HttpServer host;
    std::atomic<int> next = 0;
    host.Get("/first", [](const httplib::Request& request, httplib::Response& response) {
        response.set_content(request.get_header_value("Cookie"), "text/plain");
        response.set_header("Set-Cookie", "first=1");
    });
    host.Get("/more", [&](const httplib::Request&, httplib::Response& response) {
        for (int i = 0; i < 33; ++i)
            response.set_header("Set-Cookie", "c" + std::to_string(++next) + "=1; Path=/more");
    });
    const auto address = "http://127.0.0.1:" + std::to_string(host.bind(0));
    host.serve();
    fetch(address + "/first");
    for (int i = 0; i < 3; ++i)
        fetch(address + "/more");
    EXPECT_EQ(fetch(address + "/first").text(), "first=1");  // There are 100.
    fetch(address + "/more");
    EXPECT_EQ(fetch(address + "/first").text(), "");
}

TEST_F(UrlSessionTest, FetchesAStorablePictureOnceAndAnAdEachTime) {
    const auto picture = server.address() + "/creatives/harbour-coffee-320x60.png";
    const Outcome first = fetch(picture);
    const Outcome second = fetch(picture + "#again");
    EXPECT_GT(first.text().size(), 0u);
    EXPECT_EQ(second.body, first.body) << "not the same bytes, but a copy";
    EXPECT_EQ(second.response.value().statusCode, 200);
    EXPECT_NE(second.thread, std::this_thread::get_id());
    EXPECT_EQ(server.requests().size(), 1u);

    fetch(picture + "?container=fault-picture-no-store");
    fetch(picture + "?container=fault-picture-no-store");
    fetch(ads("home-bottom"));
    fetch(ads("home-bottom"));
    EXPECT_EQ(server.requests().size(), 5u);
}

TEST_F(UrlSessionTest, RevalidatesAStaleResponse) {
    HttpServer host;
    std::atomic<int> version = 1;
    std::atomic<bool> hasMoved = false;
    std::atomic<bool> staysFresh = false;
    host.Get("/", [&](const httplib::Request& request, httplib::Response& response) {
        const auto tag = '"' + std::to_string(version) + '"';
        if (hasMoved) return response.set_redirect("/other");
        response.set_header("ETag", tag);
        if (request.get_header_value("If-None-Match") == tag) {
            response.status = 304;
            if (staysFresh) response.set_header("Cache-Control", "max-age=60");
        } else {
            response.set_content("version " + tag, "text/plain");
        }
    });
    host.Get("/other", [](const httplib::Request& request, httplib::Response& response) {
        response.status = request.has_header("If-None-Match") ? 200 : 304;
    });
    const auto address = "http://127.0.0.1:" + std::to_string(host.bind(0)) + "/";
    std::atomic<int> requests = 0;
    std::atomic<int> conditions = 0;
    host.onRequest = [&](const auto& request) {
        ++requests;
        conditions += request.has_header("If-None-Match");
    };
    host.serve();
    const auto expect = [&](const std::string& body, long status, int asked) {
        const Outcome outcome = fetch(address);
        EXPECT_EQ(outcome.text(), body);
        EXPECT_EQ(outcome.response.value().statusCode, status);
        EXPECT_EQ(conditions, asked);
    };
    expect("version \"1\"", 200, 0);
    expect("version \"1\"", 200, 1);
    version = 2;
    expect("version \"2\"", 200, 2);
    expect("version \"2\"", 200, 3);
    hasMoved = true;
    expect("", 304, 4);  // The redirect's target was requested without a condition.
    expect("", 304, 4);
    hasMoved = false;
    expect("version \"2\"", 200, 4);
    staysFresh = true;
    expect("version \"2\"", 200, 5);
    const int requestsBefore = requests;
    expect("version \"2\"", 200, 5);
    EXPECT_EQ(requests, requestsBefore);
}

TEST_F(UrlSessionTest, StoresOnlyWholeStorableResponsesOfTheRequestedUrl) {
    HttpServer host;
    std::atomic<int> turn = 0;
    const auto answer = [&](const char* path, const std::string& status, const std::string& head) {
        host.Get(path, [&turn, status, head](const httplib::Request&, httplib::Response&) {
            HttpServer::connection().sendAll("HTTP/1.1 " + status +
                                             "\r\nCache-Control: max-age=60\r\n" + head + "\r\n" +
                                             std::to_string(++turn % 10));
            HttpServer::connection().close();
        });
    };
    const std::string length = "Content-Length: 1\r\n";
    answer("/whole", "200 OK", length + "Vary: Accept\r\n");
    answer("/until-closed", "200 OK", "");
    answer("/cut-short", "200 OK", "Content-Length: 2\r\n");
    answer("/missing", "404 Not Found", length);
    answer("/moved", "302 Found", length + "Location: /whole?too\r\n");
    answer("/varying", "200 OK", length + "Vary: Accept\r\nVary: Cookie\r\n");
    answer("/with-cookie", "200 OK", length + "Set-Cookie: visitor=17\r\n");
    answer("/aged", "200 OK", length + "Age: 60\r\n");
    answer("/dated", "200 OK", length + "Date: Sun, 06 Nov 1994 08:49:37 GMT\r\n");
    const auto address = "http://127.0.0.1:" + std::to_string(host.bind(0));
    host.serve();
    const std::map<std::string, int> askedFor = {
        {"/whole", 1},   {"/until-closed", 2}, {"/cut-short", 2}, {"/missing", 2}, {"/moved", 4},
        {"/varying", 2}, {"/with-cookie", 2},  {"/aged", 2},      {"/dated", 2}};
    for (const auto& [path, times] : askedFor) {
        turn = 0;
        fetch(address + path);
        fetch(address + path);
        EXPECT_EQ(turn, times) << path;
    }
}

TEST_F(UrlSessionTest, CompletesOnAThreadThatTakesNoneOfTheHostsSignals) {
    struct Guest {
        std::promise<std::thread::id>& leaves;
        ~Guest() { leaves.set_value(std::this_thread::get_id()); }
    };
    std::promise<std::thread::id> guestLeaves;
    std::promise<std::thread::id> completes;
    std::string name(16, '\0');
    sigset_t blocked;
    const auto callersMask = [] {
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        std::set<int> signals;
        for (int signal = 1; signal < NSIG; ++signal)
            if (sigismember(&mask, signal) == 1) signals.insert(signal);
        return signals;
    };
    const auto maskBefore = callersMask();
    auto task = UrlSession::shared().dataTask(
        Url::fromString(ads("home-bottom")).value(),
        [&, guest = std::shared_ptr<Guest>(new Guest{guestLeaves})](auto, auto, auto) {
            pthread_getname_np(pthread_self(), name.data(), name.size());
            pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
            completes.set_value(std::this_thread::get_id());
        });
    task.resume();
    EXPECT_EQ(callersMask(), maskBefore);
    auto left = guestLeaves.get_future();
    ASSERT_EQ(left.wait_for(kDeadline), std::future_status::ready);
    EXPECT_EQ(left.get(), completes.get_future().get());
    EXPECT_THAT(name, StartsWith("vexmora-"));
    EXPECT_TRUE(sigismember(&blocked, SIGTERM) && sigismember(&blocked, SIGPIPE));
    EXPECT_FALSE(sigismember(&blocked, SIGSEGV));
}

TEST_F(UrlSessionTest, StartsAResumedTaskOnceAndReusesTheConnection) {
    const auto neverResumed = taskFor(ads("unused"));
    auto [task, future] = taskFor(ads("home-bottom"));
    task.resume();
    task.resume();
    outcomeOf(std::move(future));
    fetch(ads("home-bottom"));
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].clientPort, requests[1].clientPort);
}

TEST_F(UrlSessionTest, StartsATaskAfterTheMainQueueBlockThatResumedIt) {
    FakeMainQueue::start();
    auto [task, future] = taskFor(ads("home-bottom"));
    bool answeredInside = true;
    MainQueue::main()->async([&, resumed = &task] {
        resumed->resume();
        // If the task had been started already, its request would arrive before this one.
        std::thread([&] { fetch(ads("fault-empty-array")); }).join();
        answeredInside = server.requests().size() != 1;
    });
    FakeMainQueue::drain();
    outcomeOf(std::move(future));
    EXPECT_FALSE(answeredInside);
    EXPECT_EQ(server.requests().size(), 2u);
}

TEST_F(UrlSessionTest, CompletesEveryTaskOfManyThreadsOnce) {
    constexpr int kThreads = 8;
    constexpr int kEach = 50;
    std::atomic<int> completions = 0;
    std::promise<void> all;
    const auto count = [&](auto, auto, auto) {
        if (++completions == kThreads * kEach) all.set_value();
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kEach; ++i) {
                const auto url = i % 5 == thread % 5 ? "relative" : ads("home-bottom");
                UrlSession::shared().dataTask(Url::fromString(url).value(), count).resume();
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(all.get_future().wait_for(kDeadline), std::future_status::ready);
    EXPECT_EQ(server.requests().size(), kThreads * kEach * 4u / 5u);
}

}  // namespace
}  // namespace VexmoraSDK::platform
