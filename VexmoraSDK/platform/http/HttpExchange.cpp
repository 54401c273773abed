#include "VexmoraSDK/platform/http/HttpExchange.h"

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace VexmoraSDK::platform {
namespace {

/// The values of a header of the last answer.
std::vector<std::string> values(CURL* easy, const char* header) {
    std::vector<std::string> values;
    curl_header* found = nullptr;
    while (true) {
        const auto result = curl_easy_header(easy, header, values.size(), CURLH_HEADER, -1, &found);
        if (result == CURLHE_OUT_OF_MEMORY) throw std::bad_alloc();
        if (result != CURLHE_OK) return values;
        values.emplace_back(found->value);
    }
}

std::string joined(CURL* easy, const char* header) {
    std::string joined;
    for (const auto& value : values(easy, header))
        joined.append(joined.empty() ? "" : ", ").append(value);
    return joined;
}

}  // namespace

HttpExchange::HttpExchange(std::shared_ptr<Transfer> transfer)
    : transfer_(std::move(transfer)), easy_(curl_easy_init()) {
    transfer_->asked = HttpCache::now();
}

HttpExchange::~HttpExchange() {
    curl_easy_cleanup(easy_);
    curl_slist_free_all(conditions_);
}

CURLcode HttpExchange::configure(CURLSH* cookies) {
    CURLcode result = easy_ ? CURLE_OK : CURLE_FAILED_INIT;
    const auto set = [&](CURLoption option, auto value) {
        if (result == CURLE_OK) result = curl_easy_setopt(easy_, option, value);
    };

    set(CURLOPT_URL, transfer_->url.text().c_str());
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, limits_.redirects);
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
    set(CURLOPT_PROXY, "");
    set(CURLOPT_SHARE, cookies);
    set(CURLOPT_COOKIEFILE, "");  // no file, but the cookies at all

    set(CURLOPT_NOSIGNAL, 1L);
    // Otherwise the end of a transfer waits until its name is resolved, and all others with it.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits_.connecting.count()));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(limits_.silence.count()));
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits_.total.count()));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits_.body));

    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_HEADERFUNCTION, &HttpExchange::receiveHeader);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &HttpExchange::receiveBody);
    set(CURLOPT_WRITEDATA, this);
    if (result == CURLE_OK && transfer_->earlier) result = setConditions();
    return result;
}

CURLcode HttpExchange::setConditions() {
    for (const auto& header : transfer_->earlier->terms.conditions()) {
        curl_slist* longer = curl_slist_append(conditions_, header.c_str());
        if (!longer) return CURLE_OUT_OF_MEMORY;
        conditions_ = longer;
    }
    return curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, conditions_);
}

// The head of each answer, redirections included, goes from a status line to an empty line. A count
// other than the given one makes libcurl end the transfer with an error.
std::size_t HttpExchange::receiveHeader(const char* bytes, std::size_t, std::size_t count,
                                        void* self) noexcept {
    const std::string_view line(bytes, count);
    auto& exchange = *static_cast<HttpExchange*>(self);
    if (line.starts_with("HTTP/")) exchange.headIsComplete_ = false;
    if (line == "\r\n" || line == "\n") exchange.headIsComplete_ = true;
    exchange.headBytes_ += count;
    if (exchange.headBytes_ > exchange.limits_.heads) {
        exchange.refuse(CURLE_FILESIZE_EXCEEDED);
    } else if (exchange.headIsComplete_ && exchange.conditions_) {
        // They are for the address that was asked, and not for one that it redirects to.
        exchange.refusal_ = curl_easy_setopt(exchange.easy_, CURLOPT_HTTPHEADER, nullptr);
    }
    return exchange.refusal_ == CURLE_OK ? count : 0;
}

std::size_t HttpExchange::receiveBody(const char* bytes, std::size_t, std::size_t count,
                                      void* self) noexcept {
    auto& exchange = *static_cast<HttpExchange*>(self);
    try {
        if (!exchange.bodyBegan_ && !exchange.beginBody()) return 0;
        return exchange.take(reinterpret_cast<const std::byte*>(bytes), count) ? count : 0;
    } catch (const std::bad_alloc&) {
        exchange.refusal_ = CURLE_OUT_OF_MEMORY;
        return 0;
    }
}

bool HttpExchange::beginBody() {
    bodyBegan_ = true;
    // Whoever announces two lengths may mean either.
    const auto lengths = values(easy_, "Content-Length");
    if (std::ranges::adjacent_find(lengths, std::not_equal_to()) != lengths.end())
        return refuse(CURLE_WEIRD_SERVER_REPLY);

    for (const auto& encoding : values(easy_, "Content-Encoding")) {
        if (curl_strequal(encoding.c_str(), "identity")) continue;
        if (gzip_ || !curl_strequal(encoding.c_str(), "gzip"))
            return refuse(CURLE_BAD_CONTENT_ENCODING);
        gzip_.emplace();
    }
    return true;
}

bool HttpExchange::take(const std::byte* bytes, std::size_t count) {
    if (!gzip_) return takeDecoded(bytes, count);
    const bool decoded = gzip_->decode(
        bytes, count, [this](const auto* part, auto size) { return takeDecoded(part, size); });
    return decoded || (refusal_ == CURLE_OK && refuse(CURLE_BAD_CONTENT_ENCODING));
}

bool HttpExchange::takeDecoded(const std::byte* bytes, std::size_t count) {
    if (count > limits_.body - transfer_->body.size()) return refuse(CURLE_FILESIZE_EXCEEDED);
    append(bytes, count);
    return true;
}

bool HttpExchange::refuse(CURLcode reason) {
    refusal_ = reason;
    return false;
}

void HttpExchange::append(const std::byte* bytes, std::size_t count) {
    Data& body = transfer_->body;
    curl_off_t announced = 0;
    if (body.empty() &&
        curl_easy_getinfo(easy_, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced) == CURLE_OK &&
        announced > 0) {
        body.reserve(std::min(static_cast<std::size_t>(announced), limits_.body));
    }
    body.insert(body.end(), bytes, bytes + count);
}

void HttpExchange::finish(CURLcode result) {
    // A head that was cut off is the end of the answer to libcurl.
    if (result == CURLE_OK && !headIsComplete_) result = CURLE_PARTIAL_FILE;
    if (result == CURLE_OK && gzip_ && !gzip_->isComplete()) result = CURLE_PARTIAL_FILE;
    if (result == CURLE_OK) {
        result = curl_easy_getinfo(easy_, CURLINFO_RESPONSE_CODE, &transfer_->response.statusCode);
    }
    long redirects = 0;
    if (result == CURLE_OK) result = curl_easy_getinfo(easy_, CURLINFO_REDIRECT_COUNT, &redirects);
    if (result == CURLE_OK) {
        // What a redirection led to is an answer for another address.
        if (redirects == 0) readTerms();
        return;
    }
    // To libcurl what is not taken could not be written.
    const bool refused = refusal_ != CURLE_OK;
    if (refused) result = refusal_;
    const bool told = !refused && errorText_.front() != '\0';
    transfer_->fail(result, told ? errorText_.data() : curl_easy_strerror(result));
}

/// Whether the body ended where it was meant to, and not where the connection happened to.
bool HttpExchange::endWasTold() const {
    long version = 0;
    return !values(easy_, "Content-Length").empty() ||
           curl_strequal(joined(easy_, "Transfer-Encoding").c_str(), "chunked") ||
           (curl_easy_getinfo(easy_, CURLINFO_HTTP_VERSION, &version) == CURLE_OK &&
            version >= CURL_HTTP_VERSION_2_0);
}

void HttpExchange::readTerms() {
    const long status = transfer_->response.statusCode;
    transfer_->usesEarlier = status == 304 && conditions_;
    try {
        if (!transfer_->usesEarlier && (status != 200 || !endWasTold())) return;
        transfer_->terms = {.cacheControl = joined(easy_, "Cache-Control"),
                            .vary = joined(easy_, "Vary"),
                            .date = joined(easy_, "Date"),
                            .age = joined(easy_, "Age"),
                            .expires = joined(easy_, "Expires"),
                            .etag = joined(easy_, "ETag"),
                            .lastModified = joined(easy_, "Last-Modified"),
                            .setsCookie = !values(easy_, "Set-Cookie").empty()};
    } catch (const std::bad_alloc&) {
        // Then the answer is not kept.
    }
}

}  // namespace VexmoraSDK::platform
