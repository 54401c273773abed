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
std::shared_ptr<T> adFrom(const platform::Url& url, const platform::SharedData& body,
                          const ErrorCallback& errorCallback) {
    const platform::FatalContext context("answer to", url.text());
    return Utils::getAdFromJson<T>(unwrap(body, "body"), errorCallback);
}

template <class T>
void fetchAndCreate(const platform::Url& url, std::function<void(std::shared_ptr<T>)> completion,
                    ErrorCallback errorCallback) {
    const auto parse = [url, completion = std::move(completion),
                        errorCallback](const platform::SharedData& body) {
        if (auto ad = adFrom<T>(url, body, errorCallback)) {
            completion(std::move(ad));
        } else {
            errorCallback(VexmoraError(VexmoraErrorCodes::NoFill, std::nullopt));
        }
    };
    Utils::getDataFromUrl(
        url,
        [parse](platform::SharedData body) {
            unwrap(platform::MainQueue::main(), "application object")
                .async([parse, body = std::move(body)] { parse(body); });
        },
        errorCallback);
}

}  // namespace

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
