// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/Fetch.h"

#include <curl/curl.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// Scheme, host and port; empty for an address without a host.
std::string originOf(const Url& url) {
    const auto host = url.host();
    if (host.empty()) return {};
    const std::string scheme = url.scheme();
    const auto begin = static_cast<std::size_t>(host.data() - url.text().data());
    const auto end = url.text().find_first_of("/?#", begin);
    auto authority = url.text().substr(begin, end == std::string::npos ? end : end - begin);
    for (char& c : authority)
        c = lowerCase(c);
    std::string port = authority.substr(host.size());
    port.erase(0, port.find_first_not_of(":0"));
    if (port.empty()) port = scheme == "https" ? "443" : "80";
    return scheme + "://" + authority.substr(0, host.size()) + ':' + port;
}

/// Decompresses a gzip file of one or more members into `decoded`, which takes at most `maxBytes`.
CURLcode gunzip(const Data& file, std::size_t maxBytes, Data& decoded) noexcept {
    z_stream stream{};
    constexpr int kOnlyGzip = 16;
    if (inflateInit2(&stream, MAX_WBITS + kOnlyGzip) != Z_OK) return CURLE_OUT_OF_MEMORY;
    const std::unique_ptr<z_stream, int (*)(z_stream*)> ending(&stream, inflateEnd);

    std::array<std::byte, 32'768> piece;
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(file.data()));
    stream.avail_in = static_cast<uInt>(file.size());
    while (true) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result == Z_BUF_ERROR) return CURLE_PARTIAL_FILE;  // no input is left
        if (result == Z_MEM_ERROR) return CURLE_OUT_OF_MEMORY;
        if (result != Z_OK && result != Z_STREAM_END) return CURLE_BAD_CONTENT_ENCODING;
        const std::size_t count = piece.size() - stream.avail_out;
        if (count > maxBytes - decoded.size()) return CURLE_FILESIZE_EXCEEDED;
        try {
            decoded.insert(decoded.end(), piece.data(), piece.data() + count);
        } catch (const std::bad_alloc&) {
            return CURLE_OUT_OF_MEMORY;
        }
        if (result != Z_STREAM_END) continue;
        if (stream.avail_in == 0) return CURLE_OK;
        inflateReset(&stream);
    }
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
      cache_(store),
      limits_(bounds) {}

bool Fetch::isServedFromCache() {
    const auto now = HttpCache::now();
    cached_ = cache_.find(url, now);
    servedFromCache_ = cached_ && cached_->isFresh(now);
    return servedFromCache_;
}

std::vector<std::string> Fetch::requestHeaders() const {
    return cached_ ? cached_->policy.conditionalHeaders() : std::vector<std::string>();
}

void Fetch::fail(int code, const char* description) {
    Dictionary userInfo;
    userInfo.emplace(kLocalizedDescriptionKey, std::string(description));
    userInfo.emplace(kFailingUrlStringKey, url.text());
    error.emplace("VexmoraURLErrorDomain", code, std::move(userInfo));
}

void Fetch::complete() {
    const auto callback = std::exchange(completion, nullptr);
    if (!error && !servedFromCache_) decodeBody();
    if (error) return callback(nullptr, std::nullopt, std::move(error));
    SharedData body;
    if (!servedFromCache_) {
        response.body.shrink_to_fit();  // It may be kept for long.
        body = std::make_shared<const Data>(std::move(response.body));
        tellCache(body);
    }
    if (servedFromCache_) return callback(cached_->body, UrlResponse{200}, std::nullopt);
    callback(std::move(body), UrlResponse{response.status}, std::nullopt);
}

/// A body in an encoding of another name is taken as it is: some servers name a charset, say.
void Fetch::decodeBody() {
    const auto encodings = response.headers.combined("Content-Encoding");
    const auto times = std::ranges::count_if(listElements(encodings), isGzip);
    if (times == 0 || response.body.empty()) return;
    Data decoded;
    const auto result = times == 1 ? gunzip(response.body, limits_.maxBodyBytes, decoded)
                                   : CURLE_BAD_CONTENT_ENCODING;
    if (result != CURLE_OK) return fail(result, curl_easy_strerror(result));
    response.body = std::move(decoded);
}

void Fetch::tellCache(const SharedData& body) {
    const HttpCache::Times times{requestTime, HttpCache::now()};
    servedFromCache_ = response.status == 304 && cached_ && !response.isRedirected;
    if (servedFromCache_)
        return cache_.revalidated(cached_, CachePolicy::of(response.headers), times);
    const bool isOfUse =
        response.status == 200 && response.isSelfDelimited && !response.isRedirected;
    cache_.store(url, isOfUse ? CachePolicy::of(response.headers) : CachePolicy(), body, times);
}

}  // namespace VexmoraSDK::platform
