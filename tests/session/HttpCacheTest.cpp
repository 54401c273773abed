// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/HttpCache.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace VexmoraSDK::platform {
namespace {

using std::chrono::seconds;

constexpr HttpCache::Time kNoon{seconds(1'795'262'400)};
constexpr auto kNoonText = "Sat, 21 Nov 2026 12:00:00 GMT";
constexpr auto kMinuteLater = "Sat, 21 Nov 2026 12:01:00 GMT";
constexpr auto kMinuteBefore = "Sat, 21 Nov 2026 11:59:00 GMT";

const std::string kOne = "\"1\"";
const std::string kCondition = "If-None-Match: \"1\"";

Url url(const std::string& text) {
    return Url::fromString(text).value();
}

class HttpCacheTest : public testing::Test {
 protected:
    void store(const std::string& at, const CachePolicy& policy, std::string_view body = "body") {
        cache.store(url(at), policy, std::make_shared<const Data>(dataOf(body)), {kNoon, kNoon});
    }

    std::string found(const std::string& at, HttpCache::Time now = kNoon) {
        const auto response = cache.find(url(at), now);
        return response ? std::string(textOf(*response->body)) : "nothing";
    }

    UrlSessionLimits limits;
    HttpCache cache{limits};
    const std::string address = "https://a.example/b.png?c";
};

TEST_F(HttpCacheTest, UsesAResponseWhileItIsFreshAndThenRevalidatesIt) {
    struct Case {
        CachePolicy policy;
        std::int64_t freshFor;
        std::vector<std::string> conditions{};
    };
    const Case cases[] = {
        {{.cacheControl = "max-age=60"}, 60},
        {{.cacheControl = "public, Max-Age=60,, must-revalidate, x=\"no-store, \\\"\""}, 60},
        {{.cacheControl = "s-maxage=600, max-age=60", .etag = kOne}, 60, {kCondition}},
        {{.cacheControl = "max-age=99999999999999999999"}, std::int64_t{1} << 31},
        {{.cacheControl = "max-age=60", .age = "20"}, 40},
        {{.cacheControl = "max-age=60", .date = kMinuteLater}, 60},
        {{.cacheControl = "max-age=90", .date = kMinuteBefore}, 30},
        {{.cacheControl = "max-age=90", .date = kMinuteBefore, .age = "70"}, 20},
        {{.expires = kMinuteLater}, 60},
        {{.date = kMinuteBefore, .expires = "Saturday, 21-Nov-26 12:01:00 GMT"}, 60},
        {{.cacheControl = "max-age=10", .expires = kMinuteLater}, 10},
        {{.cacheControl = "max-age=60", .vary = "Accept-Encoding, origin"}, 60},

        {{.etag = kOne}, 0, {kCondition}},
        {{.lastModified = kNoonText}, 0, {std::string("If-Modified-Since: ") + kNoonText}},
        {{.etag = "W/\"\"", .lastModified = kNoonText},
         0,
         {"If-None-Match: W/\"\"", std::string("If-Modified-Since: ") + kNoonText}},
        {{.cacheControl = "no-cache, max-age=60", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=60, no-cache=\"a\"", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=0", .expires = kMinuteLater, .etag = kOne}, 0, {kCondition}},

        // What cannot be read is not relied on.
        {{.cacheControl = "max-age=x", .expires = kMinuteLater, .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=-60", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=\"60\"", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=60, max-age=60", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=60", .age = "1, 2", .etag = kOne}, 0, {kCondition}},
        {{.cacheControl = "max-age=60", .date = "noon", .etag = kOne}, 0, {kCondition}},
        {{.expires = "0", .etag = kOne}, 0, {kCondition}},
        {{.expires = "Tue, 31 Nov 2026 12:00:00 GMT", .etag = kOne}, 0, {kCondition}},
        {{.expires = std::string(kMinuteLater) + "+1", .etag = kOne}, 0, {kCondition}},
        {{.date = kMinuteBefore,
          .expires = std::string(kMinuteLater) + ", " + kMinuteLater,
          .etag = kOne},
         0,
         {kCondition}},
        {{.cacheControl = "max-age=60", .etag = "1"}, 60},
        {{.cacheControl = "max-age=60", .etag = "\"a\rX: b\"", .lastModified = "noon"}, 60},
    };
    for (const auto& [policy, freshFor, conditions] : cases) {
        SCOPED_TRACE(policy.cacheControl + " | " + policy.expires + " | " + policy.age + " | " +
                     policy.etag);
        store(address, policy);
        const auto end = kNoon + seconds(freshFor);
        if (freshFor > 0) {
            const auto fresh = cache.find(url(address + "#d"), end - seconds(1));
            ASSERT_TRUE(fresh);
            EXPECT_TRUE(fresh->isFresh(end - seconds(1)));
            EXPECT_FALSE(fresh->isFresh(kNoon - seconds(1))) << "the clock was set back";
        }
        const auto old = cache.find(url(address), end);
        EXPECT_TRUE(!old || !old->isFresh(end));
        EXPECT_EQ(old ? old->policy.conditionalHeaders() : std::vector<std::string>(), conditions);
    }

    cache.store(url(address), CachePolicy{.cacheControl = "max-age=60", .age = "5"},
                std::make_shared<const Data>(), {kNoon, kNoon + seconds(10)});
    EXPECT_TRUE(cache.find(url(address), kNoon + seconds(54)));
    EXPECT_FALSE(cache.find(url(address), kNoon + seconds(55)))
        << "the time of the transfer counts as age";
}

// What 32 bits would cut off counts, and the clock may have passed the end of a 32-bit `time_t`.
TEST_F(HttpCacheTest, CountsBeyond32BitsAndTheYear2038) {
    constexpr HttpCache::Time kStartOf2100{seconds(4'102'444'800)};
    const auto isFreshUntil = [&](HttpCache::Time now, const CachePolicy& policy,
                                  HttpCache::Time end) {
        SCOPED_TRACE(policy.cacheControl + " | " + policy.expires + " | " + policy.age);
        cache.store(url(address), policy, std::make_shared<const Data>(), {now, now});
        const auto stored = cache.find(url(address), now);
        EXPECT_EQ(stored ? stored->freshUntil : now, end);
    };
    constexpr auto kCentury = "Fri, 01 Jan 2100 00:00:00 GMT";
    constexpr auto kNextSecond = "Fri, 01 Jan 2100 00:00:01 GMT";
    isFreshUntil(kNoon, {.expires = kCentury}, kStartOf2100);
    isFreshUntil(kNoon, {.expires = "Fri Jan  1 00:00:00 2100"}, kStartOf2100);
    isFreshUntil(kStartOf2100, {.date = kCentury, .expires = kNextSecond},
                 kStartOf2100 + seconds(1));
    isFreshUntil(kStartOf2100, {.cacheControl = "max-age=60", .date = kCentury, .age = "20"},
                 kStartOf2100 + seconds(40));
    isFreshUntil(kNoon, {.cacheControl = "max-age=4294967297"},
                 kNoon + seconds(std::int64_t{1} << 31));
    isFreshUntil(kNoon, {.cacheControl = "max-age=60", .age = "4294967297"}, kNoon);
    isFreshUntil(kNoon, {.cacheControl = "max-age=60", .date = "Wed, 15 Oct 1890 05:31:44 GMT"},
                 kNoon);
}

TEST_F(HttpCacheTest, StoresNoResponseThatIsNotStorableAndDropsThePreviousOne) {
    const CachePolicy cases[] = {
        {.cacheControl = "no-store, max-age=60", .etag = kOne},
        {.cacheControl = "max-age=60,NO-STORE", .etag = kOne},
        {.cacheControl = "max-age=60; private", .etag = kOne},
        {.cacheControl = "max-age = 60", .etag = kOne},
        {.cacheControl = "max-age=60, private=\"a", .etag = kOne},
        {.cacheControl = "max-age=60, =", .etag = kOne},
        {.cacheControl = "max-age=60", .vary = "*"},
        {.cacheControl = "max-age=60", .vary = "Accept, Cookie"},
        {.cacheControl = "max-age=60", .vary = "Accept Encoding"},
        {.cacheControl = "max-age=60", .setsCookie = true},
        {.cacheControl = "max-age=60", .etag = '"' + std::string(3000, 'x') + '"'},
        {.cacheControl = "max-age=0", .etag = "1"},
        {},
    };
    for (const auto& policy : cases) {
        SCOPED_TRACE(policy.cacheControl + " | " + policy.vary);
        store(address, {.cacheControl = "max-age=60"});
        EXPECT_EQ(found(address), "body");
        store(address, policy);
        EXPECT_EQ(found(address), "nothing");
    }
}

TEST_F(HttpCacheTest, UpdatesAResponseThatTheServerHasRevalidated) {
    const auto later = kNoon + seconds(60);
    const auto stale = [&] {
        store(address, {.cacheControl = "max-age=60", .age = "20", .etag = kOne});
        return cache.find(url(address), later);
    };
    const auto revalidateWith = [&](const CachePolicy& policy) {
        cache.revalidated(stale(), policy, {later, later});
    };

    revalidateWith({.date = kMinuteLater});
    EXPECT_TRUE(cache.find(url(address), later)->isFresh(later + seconds(59)));
    EXPECT_EQ(found(address, later), "body");
    revalidateWith({.cacheControl = "max-age=10", .etag = kOne});
    EXPECT_FALSE(cache.find(url(address), later)->isFresh(later + seconds(10)));

    revalidateWith({.cacheControl = "no-store"});
    EXPECT_EQ(found(address, later), "nothing");
    revalidateWith({.setsCookie = true});
    EXPECT_EQ(found(address, later), "nothing");
    revalidateWith({.etag = "\"2\""});
    EXPECT_EQ(found(address, later), "nothing") << "the 304 names another entity tag";

    const auto revalidated = stale();
    store(address, {.cacheControl = "max-age=90"}, "another");
    cache.revalidated(revalidated, {}, {later, later});
    EXPECT_EQ(found(address, later), "another") << "a response that was stored meanwhile stays";
}

TEST_F(HttpCacheTest, DropsTheLeastRecentlyUsedResponsesBeyondItsLimit) {
    limits.maxCacheBytes = 80'000;
    const CachePolicy policy{.cacheControl = "max-age=60"};
    const auto place = [](int number) { return "https://a.example/" + std::to_string(number); };
    const auto holds = [&](int number) { return cache.find(url(place(number)), kNoon) != nullptr; };
    for (int number = 0; number < 10; ++number) {
        store(place(number), policy, std::string(8'000, 'x'));
        EXPECT_TRUE(holds(0));
    }
    EXPECT_FALSE(holds(1));
    for (int number = 2; number < 10; ++number)
        EXPECT_TRUE(holds(number)) << number;

    store(place(99), policy, std::string(9'999, 'x'));
    EXPECT_FALSE(holds(99)) << "with its address more than an eighth";
    store("https://a.example/" + std::string(9'999, 'x'), policy);
    EXPECT_TRUE(holds(2));

    for (int number = 0; number < 1'000; ++number)
        store(place(number), policy, "");
    int held = 0;
    for (int number = 0; number < 1'000; ++number)
        held += holds(number);
    EXPECT_LT(held, 80'000 / 256) << "addresses and policy take memory, too";
}

}  // namespace
}  // namespace VexmoraSDK::platform
