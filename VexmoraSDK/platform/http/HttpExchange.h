#pragma once

#include <curl/curl.h>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include "VexmoraSDK/platform/http/GzipDecoder.h"
#include "VexmoraSDK/platform/http/Transfer.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// A transfer while libcurl works on it: what is asked of libcurl, and what it brings. On one
/// thread.
class HttpExchange {
 public:
    explicit HttpExchange(std::shared_ptr<Transfer> transfer);
    ~HttpExchange();
    HttpExchange(const HttpExchange&) = delete;
    HttpExchange& operator=(const HttpExchange&) = delete;

    /// Must succeed before `easy` is used: half a configuration might let through what it should
    /// not.
    CURLcode configure(CURLSH* cookies);
    CURL* easy() const { return easy_; }

    /// Fills in the transfer's outcome.
    void finish(CURLcode result);
    const std::shared_ptr<Transfer>& transfer() const { return transfer_; }

 private:
    CURLcode setConditions();
    static std::size_t receiveHeader(const char* bytes, std::size_t, std::size_t count,
                                     void* self) noexcept;
    static std::size_t receiveBody(const char* bytes, std::size_t, std::size_t count,
                                   void* self) noexcept;
    // False when the body is refused.
    bool beginBody();
    bool take(const std::byte* bytes, std::size_t count);
    bool takeDecoded(const std::byte* bytes, std::size_t count);
    bool refuse(CURLcode reason);
    void append(const std::byte* bytes, std::size_t count);
    bool endWasTold() const;
    void readTerms();

    const std::shared_ptr<Transfer> transfer_;
    const UrlSessionLimits limits_ = UrlSessionLimits::shared();
    CURL* const easy_;
    curl_slist* conditions_ = nullptr;
    bool headIsComplete_ = false;
    std::size_t headBytes_ = 0;
    bool bodyBegan_ = false;
    std::optional<GzipDecoder> gzip_;
    /// Why what came was not taken.
    CURLcode refusal_ = CURLE_OK;
    std::array<char, CURL_ERROR_SIZE> errorText_{};
};

}  // namespace VexmoraSDK::platform
