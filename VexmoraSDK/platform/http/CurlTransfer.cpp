// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/CurlTransfer.h"

#include <sys/socket.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// Resolves the location of a redirect from `base`; empty if the result is no valid URL.
std::string resolved(const std::string& base, const std::string& location) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
    char* text = nullptr;
    // Many a server sends blanks and letters beyond ASCII as they are.
    if (!url || curl_url_set(url.get(), CURLUPART_URL, base.c_str(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_URL, location.c_str(),
                     CURLU_URLENCODE | CURLU_ALLOW_SPACE) != CURLUE_OK ||
        curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, decltype(&curl_free)> owned(text, curl_free);
    return text;
}

/// Programs that the host starts do not inherit it.
curl_socket_t openSocket(void*, curlsocktype, curl_sockaddr* address) {
    return socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

bool isHttps(std::string_view url) {
    return equalIgnoringCase(url.substr(0, 6), "https:");
}

/// Whether the host of the URL is a name, and not an address.
bool hasNamedHost(std::string_view url) {
    const auto host = url.substr(std::min(url.find("://"), url.size() - 3) + 3);
    return !host.starts_with('[') &&
           host.find_first_not_of("0123456789.") < host.find_first_of(":/?#");
}

/// libcurl takes the first of several lengths for the length, and passes on what is encoded for the
/// transfer in another way than in chunks.
CURLcode checkFraming(const HttpHeaders& headers) {
    const auto encodings = headers.combined("Transfer-Encoding");
    for (const auto encoding : listElements(encodings)) {
        if (!equalIgnoringCase(encoding, "chunked") && !equalIgnoringCase(encoding, "identity"))
            return CURLE_BAD_CONTENT_ENCODING;
    }
    const auto combined = headers.combined("Content-Length");
    const auto lengths = listElements(combined);
    for (const auto length : lengths) {
        if (length != lengths.front() || length.find_first_not_of("0123456789") != length.npos)
            return CURLE_WEIRD_SERVER_REPLY;
    }
    return CURLE_OK;
}

/// Where a response with this head redirects to; empty when it does not.
std::string_view locationOf(const HttpResponse& response) {
    constexpr std::array kRedirections = {301L, 302L, 303L, 307L, 308L};
    if (std::ranges::count(kRedirections, response.status) == 0) return {};
    const auto locations = response.headers.values("Location");
    return locations.empty() ? std::string_view() : locations.front();
}

}  // namespace

template <class Value>
void CurlTransfer::set(CURLoption option, Value value) {
    if (error_ == CURLE_OK) error_ = curl_easy_setopt(easy_.get(), option, value);
}

/// libcurl's callback for headers and body. A count other than the given one makes libcurl end the
/// transfer with an error.
template <CURLcode (CurlTransfer::*take)(std::string_view bytes)>
std::size_t CurlTransfer::receive(const char* bytes, std::size_t, std::size_t count,
                                  void* self) noexcept {
    auto& transfer = *static_cast<CurlTransfer*>(self);
    transfer.refusal_ = (transfer.*take)({bytes, count});
    return transfer.refusal_ == CURLE_OK ? count : 0;
}

CurlTransfer::CurlTransfer(EasyHandle easy, std::string url,
                           const std::vector<std::string>& requestHeaders, CURLSH* cookies,
                           const UrlSessionLimits& limits, std::size_t& heldBytes,
                           std::optional<NextDescriptors>& resolving)
    : limits_(limits),
      heldBytes_(heldBytes),
      resolving_(resolving),
      easy_(std::move(easy)),
      url_(std::move(url)) {
    if (!easy_) error_ = CURLE_FAILED_INIT;
    set(CURLOPT_URL, url_.c_str());
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
    set(CURLOPT_PROXY, "");
    set(CURLOPT_OPENSOCKETFUNCTION, &openSocket);
    set(CURLOPT_RESOLVER_START_FUNCTION, &willResolve);
    set(CURLOPT_RESOLVER_START_DATA, this);
    set(CURLOPT_SHARE, cookies);
    set(CURLOPT_COOKIEFILE, "");  // no file, but it switches cookies on

    set(CURLOPT_NOSIGNAL, 1L);
    // Otherwise the end of a transfer waits until its name is resolved, and all others with it.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits_.connectTimeout.count()));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(limits_.idleTimeout.count()));
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits_.totalTimeout.count()));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits_.maxBodyBytes));

    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_HEADERFUNCTION, &receive<&CurlTransfer::takeHeader>);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &receive<&CurlTransfer::takeBody>);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_VERBOSE, 1L);  // Only with it libcurl tells of what chunks are wrapped in.
    set(CURLOPT_DEBUGFUNCTION, &countBody);
    set(CURLOPT_DEBUGDATA, this);
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &checkBody);
    set(CURLOPT_XFERINFODATA, this);

    for (const auto& header : requestHeaders) {
        curl_slist* longer = curl_slist_append(requestHeaders_, header.c_str());
        if (!longer) error_ = CURLE_OUT_OF_MEMORY;
        if (longer) requestHeaders_ = longer;
    }
    if (requestHeaders_) set(CURLOPT_HTTPHEADER, requestHeaders_);
}

CurlTransfer::~CurlTransfer() {
    easy_.reset();
    curl_slist_free_all(requestHeaders_);
}

bool CurlTransfer::finish(CURLcode result) {
    const bool libcurlTellsWhy = result != CURLE_OK && refusal_ == CURLE_OK;
    if (!libcurlTellsWhy) errorText_.front() = '\0';
    error_ = refusal_ != CURLE_OK ? refusal_ : result;
    // libcurl takes a connection that ends inside the headers for the end of the response.
    if (error_ == CURLE_OK && !headIsComplete_) error_ = CURLE_PARTIAL_FILE;
    if (error_ == CURLE_OK && !location_.empty()) return follow();
    response_.isSelfDelimited = isSelfDelimited();
    response_.isRedirected = redirects_ > 0;
    return false;
}

const char* CurlTransfer::errorText() const {
    return errorText_.front() != '\0' ? errorText_.data() : curl_easy_strerror(error_);
}

bool CurlTransfer::follow() {
    const auto next = resolved(url_, location_);
    const auto left = limits_.totalTimeout - (std::chrono::steady_clock::now() - start_);
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
    if (next.empty()) error_ = CURLE_URL_MALFORMAT;
    if (isHttps(url_) && !isHttps(next)) error_ = CURLE_UNSUPPORTED_PROTOCOL;
    if (redirects_++ == limits_.maxRedirects) error_ = CURLE_TOO_MANY_REDIRECTS;
    if (milliseconds <= 0) error_ = CURLE_OPERATION_TIMEDOUT;
    url_ = next;
    set(CURLOPT_URL, url_.c_str());
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(milliseconds));
    // The request headers are meant for the first host.
    set(CURLOPT_HTTPHEADER, nullptr);
    headIsComplete_ = false;
    response_ = {};
    location_.clear();
    return error_ == CURLE_OK;
}

int CurlTransfer::willResolve(void*, void*, void* self) {
    auto& transfer = *static_cast<CurlTransfer*>(self);
    if (!hasNamedHost(transfer.url_)) return 0;
    if (transfer.resolving_) transfer.resolving_->closeOnExec();
    transfer.resolving_.emplace();
    return 0;
}

/// libcurl's debug callback.
int CurlTransfer::countBody(CURL*, curl_infotype type, char*, std::size_t count, void* self) {
    if (type == CURLINFO_DATA_IN) static_cast<CurlTransfer*>(self)->bodyBytes_ += count;
    return 0;
}

/// libcurl's progress callback. It comes also while a chunk's extension never ends, when there is
/// nothing to write.
int CurlTransfer::checkBody(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    auto& transfer = *static_cast<CurlTransfer*>(self);
    if (transfer.bodyBytes_ <= transfer.limits_.maxBodyBytes) return 0;
    transfer.refusal_ = CURLE_FILESIZE_EXCEEDED;
    return 1;
}

// Each response, interim ones too, begins with a status line and has an empty line behind its
// headers. Lines after that are trailers.
CURLcode CurlTransfer::takeHeader(std::string_view line) {
    headerBytes_ += line.size();
    if (headerBytes_ > limits_.maxHeaderBytes) return CURLE_FILESIZE_EXCEEDED;
    setsCookies_ = setsCookies_ || equalIgnoringCase(line.substr(0, 11), "Set-Cookie:");
    if (line.starts_with("HTTP/")) {
        headIsComplete_ = false;
        response_.headers.clear();
    } else if (line == "\r\n" || line == "\n") {
        headIsComplete_ = true;
        const auto known =
            curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &response_.status);
        location_ = locationOf(response_);
        return known == CURLE_OK ? checkFraming(response_.headers) : known;
    } else if (!headIsComplete_) {
        response_.headers.add(line);
    }
    return CURLE_OK;
}

// The body may come a byte at a time: nothing here looks at the headers.
CURLcode CurlTransfer::takeBody(std::string_view bytes) {
    if (bodyBytes_ > limits_.maxBodyBytes) return CURLE_FILESIZE_EXCEEDED;
    try {
        if (!location_.empty()) return CURLE_OK;
        Data& body = response_.body;
        heldBytes_ += bytes.size();
        const std::size_t size = body.size() + bytes.size();
        if (heldBytes_ > limits_.maxHeldBodyBytes && size > limits_.maxContestedBodyBytes) {
            heldBytes_ -= size;
            body = {};
            return CURLE_FILESIZE_EXCEEDED;
        }
        curl_off_t announced = 0;
        if (body.empty())
            curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
        // Announcing costs a server nothing.
        const std::size_t most = std::min(limits_.maxBodyBytes, limits_.maxContestedBodyBytes);
        if (announced > 0) body.reserve(std::min(static_cast<std::size_t>(announced), most));
        const auto* begin = reinterpret_cast<const std::byte*>(bytes.data());
        body.insert(body.end(), begin, begin + bytes.size());
    } catch (const std::bad_alloc&) {
        return CURLE_OUT_OF_MEMORY;
    }
    return CURLE_OK;
}

bool CurlTransfer::isSelfDelimited() const {
    long version = 0;
    return !response_.headers.values("Content-Length").empty() ||
           equalIgnoringCase(response_.headers.combined("Transfer-Encoding"), "chunked") ||
           (curl_easy_getinfo(easy_.get(), CURLINFO_HTTP_VERSION, &version) == CURLE_OK &&
            version >= CURL_HTTP_VERSION_2_0);
}

}  // namespace VexmoraSDK::platform
