// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/http/EasyHandles.h"
#include "VexmoraSDK/platform/http/HttpResponse.h"
#include "VexmoraSDK/platform/http/NextDescriptors.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// One GET over libcurl: request headers in, a response or an error out. Redirects are followed
/// here and not by libcurl, which would send the request headers to every host on the way and count
/// nothing of what these send. On one thread.
class CurlTransfer {
 public:
    /// `easy` has no options. `heldBytes` is what this body and those it contests with hold, and
    /// grows with it. `resolving` gets the descriptors that libcurl will open when it resolves a
    /// name.
    CurlTransfer(EasyHandle easy, std::string url, const std::vector<std::string>& requestHeaders,
                 CURLSH* cookies, const UrlSessionLimits& limits, std::size_t& heldBytes,
                 std::optional<NextDescriptors>& resolving);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// Whether `easy` may be handed to libcurl: half a configuration might let through what it
    /// should not.
    bool isReady() const { return error_ == CURLE_OK; }
    CURL* easy() const { return easy_.get(); }
    /// Takes the handle out of a finished transfer, which is of no more use than for its outcome.
    EasyHandle takeEasy() { return std::move(easy_); }

    /// Takes libcurl's result of a request. True when the response is a redirect and `easy` is to
    /// be handed to libcurl once more.
    bool finish(CURLcode result);

    /// The outcome of a finished transfer.
    CURLcode error() const { return error_; }
    const char* errorText() const;
    HttpResponse& response() { return response_; }

    /// Whether any response, redirects included, had a cookie to set.
    bool setsCookies() const { return setsCookies_; }

 private:
    template <class Value>
    void set(CURLoption option, Value value);
    bool follow();

    static int willResolve(void*, void*, void* self);
    template <CURLcode (CurlTransfer::*take)(std::string_view bytes)>
    static std::size_t receive(const char* bytes, std::size_t, std::size_t count,
                               void* self) noexcept;
    static int countBody(CURL*, curl_infotype type, char*, std::size_t count, void* self);
    static int checkBody(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
    CURLcode takeHeader(std::string_view line);
    CURLcode takeBody(std::string_view bytes);
    bool isSelfDelimited() const;

    const UrlSessionLimits limits_;
    std::size_t& heldBytes_;
    std::optional<NextDescriptors>& resolving_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    EasyHandle easy_;
    curl_slist* requestHeaders_ = nullptr;
    std::string url_;
    int redirects_ = 0;
    std::size_t headerBytes_ = 0;
    /// Of all bodies, as they were sent.
    std::size_t bodyBytes_ = 0;
    bool headIsComplete_ = false;
    bool setsCookies_ = false;
    HttpResponse response_;
    /// Where the response redirects to; empty when it does not.
    std::string location_;
    /// Why a header or a part of the body was refused, which libcurl reports as a write error.
    CURLcode refusal_ = CURLE_OK;
    CURLcode error_ = CURLE_OK;
    std::array<char, CURL_ERROR_SIZE> errorText_{};
};

}  // namespace VexmoraSDK::platform
