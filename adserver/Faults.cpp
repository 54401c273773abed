// SPDX-License-Identifier: MIT
#include "adserver/Faults.h"

#include <algorithm>

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

constexpr std::string_view kPrefix = "fault-";
constexpr std::string_view kPicturePrefix = "fault-picture-";

std::string listOf(const json::value& ad) {
    return json::serialize(json::array{ad});
}

std::string oneAd(const json::array& ads) {
    return listOf(ads.front());
}

std::string threeAds(const json::array& ads) {
    const auto count = static_cast<std::ptrdiff_t>(std::min<std::size_t>(ads.size(), 3));
    return json::serialize(json::array(ads.begin(), ads.begin() + count));
}

/// The first ad, with some members replaced.
json::value adWith(const json::array& ads, const json::object& members) {
    json::object ad = ads.front().as_object();
    for (const auto& member : members)
        ad[member.key()] = member.value();
    return ad;
}

/// Only the first ad has a picture, because the test is about the ads, not about downloads.
std::string manyAds(const json::array& ads) {
    std::string answer = json::serialize(ads.front()).insert(0, 1, '[');
    const auto further =
        json::serialize(adWith(ads, {{"bannerUrl", "about:blank"}})).insert(0, 1, ',');
    for (int i = 1; i < 100'000; ++i)
        answer += further;
    return answer + "]";
}

/// As many ads as fit into 1 MiB, the most that the library parses.
std::string mebibyteOfAds(const json::array& ads) {
    constexpr std::size_t kMebibyte = std::size_t{1} << 20;
    constexpr std::string_view kFurther = R"(,{"adTypeId":77,"clickUrl":"a:","bannerUrl":"b:"})";
    std::string answer = json::serialize(ads.front()).insert(0, 1, '[');
    while (answer.size() + kFurther.size() < kMebibyte)
        answer += kFurther;
    return answer + "]";
}

std::string noAds(const json::array&) {
    return "[]";
}

std::string bareAd(const json::array& ads) {
    return json::serialize(ads.front());
}

std::string adWithoutClickUrl(const json::array& ads) {
    json::object ad = ads.front().as_object();
    ad.erase("clickUrl");
    return listOf(ad);
}

std::string adOfNoType(const json::array& ads) {
    return listOf(adWith(ads, {{"adTypeId", 2}}));
}

std::string nativeAd(const json::array& ads) {
    return listOf(adWith(ads, {{"adTypeId", 1},
                               {"title", "A native ad"},
                               {"description", "Nobody asked for it, but here it is."},
                               {"displayName", "Uninvited Guests"}}));
}

std::string adOfManyWords(const json::array& ads) {
    return listOf(adWith(ads, {{"title", std::string(1'000'000, 'W')}}));
}

std::string adOfManyAccents(const json::array& ads) {
    std::string title = "e";
    while (title.size() < 1'000'000)
        title += "\u0301";
    return listOf(adWith(ads, {{"title", title}}));
}

std::string deepNesting(const json::array&) {
    return std::string(100'000, '[') + std::string(100'000, ']');
}

struct Content {
    std::string_view name;
    std::string (*compose)(const json::array& ads);
};

constexpr Content kContents[] = {
    {"empty-array", noAds},        {"object", bareAd},
    {"three", threeAds},           {"hundred-thousand", manyAds},
    {"mebibyte", mebibyteOfAds},   {"missing-click", adWithoutClickUrl},
    {"bad-type", adOfNoType},      {"native", nativeAd},
    {"long-title", adOfManyWords}, {"accents", adOfManyAccents},
    {"nesting", deepNesting},
};

}  // namespace

std::optional<Fault> Fault::of(std::string_view container) {
    Fault fault{"", oneAd, &Delivery::good(), &Delivery::good()};
    if (!container.starts_with(kPrefix)) return fault;
    fault.container = container;
    if (container.starts_with(kPicturePrefix)) {
        fault.picture = Delivery::named(container.substr(kPicturePrefix.size()));
        return fault.picture ? std::optional(fault) : std::nullopt;
    }
    const auto name = container.substr(kPrefix.size());
    for (const Content& content : kContents) {
        if (content.name != name) continue;
        fault.compose = content.compose;
        return fault;
    }
    fault.ads = Delivery::named(name);
    return fault.ads ? std::optional(fault) : std::nullopt;
}

std::vector<std::string> Fault::containers() {
    std::vector<std::string> containers;
    for (const auto& [name, compose] : kContents)
        containers.push_back(std::string(kPrefix).append(name));
    for (const auto& delivery : Delivery::bad()) {
        containers.push_back(std::string(kPrefix).append(delivery.name));
        containers.push_back(std::string(kPicturePrefix).append(delivery.name));
    }
    return containers;
}

}  // namespace VexmoraSDK
