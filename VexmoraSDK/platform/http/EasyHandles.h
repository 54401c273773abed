// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

namespace VexmoraSDK::platform {

struct EasyCleanup {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using EasyHandle = std::unique_ptr<CURL, EasyCleanup>;

/// Easy handles of libcurl that are not in use. A few are kept for the next transfers, because it
/// takes as long to make and destroy one as to set all its options. On one thread at a time.
class EasyHandles {
 public:
    /// A handle without options; null without memory.
    EasyHandle take() {
        return idleCount_ > 0 ? std::move(idle_[--idleCount_]) : EasyHandle(curl_easy_init());
    }

    /// Takes back a handle that is in no multi handle. It keeps its TLS sessions.
    void giveBack(EasyHandle easy) {
        if (idleCount_ == idle_.size()) return;
        // Resetting would forget the names of cookie files without freeing them.
        if (curl_easy_setopt(easy.get(), CURLOPT_COOKIEFILE, nullptr) != CURLE_OK) return;
        curl_easy_reset(easy.get());
        idle_[idleCount_++] = std::move(easy);
    }

 private:
    std::array<EasyHandle, 4> idle_;
    std::size_t idleCount_ = 0;
};

}  // namespace VexmoraSDK::platform
