// SPDX-License-Identifier: MIT
// Has the transfers of this program trust the certificate in the file that an environment variable
// names. The library has no way to be told so.
#include <curl/curl.h>
#include <dlfcn.h>

#include <cstdlib>

/// Stands before libcurl's.
extern "C" CURL* curl_easy_init() {
    static const auto next =
        reinterpret_cast<decltype(&curl_easy_init)>(dlsym(RTLD_NEXT, "curl_easy_init"));
    CURL* easy = next();
    if (const char* file = std::getenv("VEXMORA_TEST_CERTIFICATE"))
        curl_easy_setopt(easy, CURLOPT_CAINFO, file);
    return easy;
}
