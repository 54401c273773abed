// SPDX-License-Identifier: MIT
// Makes this program's transfers trust the certificate in the file that an environment variable
// names. The library has no setting for that.
#include <curl/curl.h>
#include <dlfcn.h>

#include <cstdlib>

/// Replaces libcurl's function.
extern "C" CURLMcode curl_multi_add_handle(CURLM* multi, CURL* easy) {
    static const auto next = reinterpret_cast<decltype(&curl_multi_add_handle)>(
        dlsym(RTLD_NEXT, "curl_multi_add_handle"));
    if (const char* file = std::getenv("VEXMORA_TEST_CERTIFICATE"))
        curl_easy_setopt(easy, CURLOPT_CAINFO, file);
    return next(multi, easy);
}
