// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

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
        if (idle_.empty()) return EasyHandle(curl_easy_init());
        auto easy = std::move(idle_.back());
        idle_.pop_back();
        return easy;
    }

    /// Takes back a handle that is in no multi handle. It keeps its TLS sessions.
    void giveBack(EasyHandle easy) {
        if (idle_.size() == kMaxIdle) return;
        // Resetting would forget the names of cookie files without freeing them.
        if (curl_easy_setopt(easy.get(), CURLOPT_COOKIEFILE, nullptr) != CURLE_OK) return;
        curl_easy_reset(easy.get());
        idle_.push_back(std::move(easy));
    }

 private:
    static constexpr std::size_t kMaxIdle = 4;

    std::vector<EasyHandle> idle_;
};

}  // namespace VexmoraSDK::platform
