// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/AdFactory.h"

#include <charconv>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"

namespace VexmoraSDK {

using platform::unwrap;

namespace {

const std::string& member(const AdRecord& record, std::string_view name) {
    const auto found = record.find(name);
    return unwrap(found == record.end() ? nullptr : &found->second, "member", name);
}

/// Reads an optional sign and decimal digits; absent for any other text.
std::optional<std::intptr_t> integer(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::intptr_t value = 0;
    const char* end = text.data() + text.size();
    const auto [parsedTo, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc() || parsedTo != end) return std::nullopt;
    return value;
}

platform::Url address(const AdRecord& record, std::string_view name) {
    const auto& text = member(record, name);
    const platform::FatalContext context("member", name);
    return unwrap(platform::Url::fromString(text), "value", text);
}

VexmoraAdType adTypeOf(const AdRecord& record) {
    const auto& text = member(record, "adTypeId");
    const platform::FatalContext context("member \"adTypeId\"");
    const auto number = unwrap(integer(text), "value", text);
    return unwrap(adTypeWithRawValue(number), "value", text);
}

template <class T>
void fetchAndCreate(const platform::Url& url, std::function<void(std::shared_ptr<T>)> completion,
                    ErrorCallback errorCallback) {
    const auto create = [completion = std::move(completion),
                         errorCallback](const platform::Data& body) {
        if (auto ad = Utils::getAdFromJson<T>(body, errorCallback))
            return completion(std::move(ad));
        errorCallback(VexmoraError(VexmoraErrorCodes::NoFill, std::nullopt));
    };
    AdFactory::fetchResponse(url, create, errorCallback);
}

}  // namespace

void AdFactory::fetchResponse(const platform::Url& url,
                              std::function<void(const platform::Data& body)> completion,
                              ErrorCallback errorCallback) {
    const auto complete = [url, completion = std::move(completion)](const auto& body) {
        const platform::FatalContext context("answer to", url.text());
        completion(unwrap(body, "body"));
    };
    Utils::getDataFromUrl(
        url,
        [complete](platform::SharedData body) {
            unwrap(platform::MainQueue::main(), "application object")
                .async([complete, body = std::move(body)] { complete(body); });
        },
        std::move(errorCallback));
}

std::shared_ptr<ImageAd> AdFactory::modelFrom(const AdRecord& record) {
    const auto adType = adTypeOf(record);
    auto clickUrl = address(record, "clickUrl");
    auto bannerUrl = address(record, "bannerUrl");
    if (adType == VexmoraAdType::native) {
        return Native::create(std::move(clickUrl), member(record, "title"),
                              member(record, "description"), member(record, "displayName"),
                              bannerUrl);
    }
    return Banner::create(std::move(clickUrl), std::move(bannerUrl), adType);
}

void AdFactory::fetchAndCreateAd(const platform::Url& url,
                                 std::function<void(std::shared_ptr<Native>)> completion,
                                 ErrorCallback errorCallback) {
    fetchAndCreate(url, std::move(completion), std::move(errorCallback));
}

void AdFactory::fetchAndCreateBanner(const platform::Url& url,
                                     std::function<void(std::shared_ptr<Banner>)> completion,
                                     ErrorCallback errorCallback) {
    fetchAndCreate(url, std::move(completion), std::move(errorCallback));
}

}  // namespace VexmoraSDK
