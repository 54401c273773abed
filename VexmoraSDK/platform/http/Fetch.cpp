// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/Fetch.h"

#include <curl/curl.h>

#include <algorithm>
#include <new>
#include <utility>

#include "VexmoraSDK/platform/http/Gzip.h"

namespace VexmoraSDK::platform {
namespace {

CURLcode decompress(Data& body, std::size_t maxBytes) {
    try {
        Data decoded;
        const auto result = gunzip(std::exchange(body, {}), maxBytes, decoded);
        body = std::move(decoded);
        return result == GunzipResult::whole       ? CURLE_OK
               : result == GunzipResult::truncated ? CURLE_PARTIAL_FILE
               : result == GunzipResult::tooLarge  ? CURLE_FILESIZE_EXCEEDED
                                                   : CURLE_BAD_CONTENT_ENCODING;
    } catch (const std::bad_alloc&) {
        return CURLE_OUT_OF_MEMORY;
    }
}

/// Empty for an address without a host.
std::string originOf(const Url& url) {
    const auto host = url.host();
    if (host.empty()) return {};
    const std::string scheme = url.scheme();
    const auto begin = static_cast<std::size_t>(host.data() - url.text().data());
    const auto end = url.text().find_first_of("/?#", begin);
    auto authority = url.text().substr(begin, end == std::string::npos ? end : end - begin);
    for (char& c : authority)
        c = lowerCase(c);
    const std::string_view port = std::string_view(authority).substr(host.size());
    if (port == ":" || (scheme == "http" && port == ":80") || (scheme == "https" && port == ":443"))
        authority.resize(host.size());
    return scheme + "://" + authority;
}

bool isGzip(std::string_view encoding) {
    return equalIgnoringCase(encoding, "gzip") || equalIgnoringCase(encoding, "x-gzip");
}

}  // namespace

Fetch::Fetch(Url address, UrlSession::Completion callback, HttpCache& store,
             const UrlSessionLimits& bounds, TaskPriority urgency)
    : url(std::move(address)),
      origin(originOf(url)),
      priority(urgency),
      completion(std::move(callback)),
      cache(store),
      limits(bounds) {}

bool Fetch::isServedFromCache() {
    const auto now = HttpCache::now();
    cached = cache.find(url, now);
    servedFromCache = cached && cached->isFresh(now);
    return servedFromCache;
}

std::vector<std::string> Fetch::requestHeaders() const {
    return cached ? cached->policy.conditionalHeaders() : std::vector<std::string>();
}

void Fetch::fail(int code, const char* description) {
    Dictionary userInfo;
    userInfo.emplace(kLocalizedDescriptionKey, std::string(description));
    userInfo.emplace(kFailingUrlStringKey, url.text());
    error.emplace("VexmoraURLErrorDomain", code, std::move(userInfo));
}

void Fetch::complete() {
    const auto callback = std::exchange(completion, nullptr);
    if (!error && !servedFromCache) decodeBody();
    if (error) return callback(nullptr, std::nullopt, std::move(error));
    SharedData body;
    if (!servedFromCache) {
        response.body.shrink_to_fit();  // It may be kept for long.
        body = std::make_shared<const Data>(std::move(response.body));
        tellCache(body);
    }
    if (servedFromCache) return callback(cached->body, UrlResponse{200}, std::nullopt);
    callback(std::move(body), UrlResponse{response.status}, std::nullopt);
}

/// Servers name encodings that are none, such as a charset; such a body is taken as it is.
void Fetch::decodeBody() {
    const auto encodings = response.headers.combined("Content-Encoding");
    const auto times = std::ranges::count_if(listElements(encodings), isGzip);
    if (times == 0 || response.body.empty()) return;
    const auto result =
        times == 1 ? decompress(response.body, limits.maxBodyBytes) : CURLE_BAD_CONTENT_ENCODING;
    if (result != CURLE_OK) fail(result, curl_easy_strerror(result));
}

void Fetch::tellCache(const SharedData& body) {
    const HttpCache::Times times{requestTime, HttpCache::now()};
    servedFromCache = response.status == 304 && cached && !response.isRedirected;
    if (servedFromCache) return cache.revalidated(cached, CachePolicy::of(response.headers), times);
    std::optional<CachePolicy> policy;
    if (response.status == 200 && response.isSelfDelimited && !response.isRedirected)
        policy = CachePolicy::of(response.headers);
    cache.store(url, policy, body, times);
}

}  // namespace VexmoraSDK::platform
