#include "tests/soak/TransferCount.h"

#include <curl/curl.h>

#include <atomic>

namespace {

std::atomic<int> count = 0;

}  // namespace

// The linker has the library's calls of libcurl go through these.
extern "C" {
CURLMcode __real_curl_multi_add_handle(CURLM* multi, CURL* easy);
CURLMcode __wrap_curl_multi_add_handle(CURLM* multi, CURL* easy);
CURLMcode __real_curl_multi_remove_handle(CURLM* multi, CURL* easy);
CURLMcode __wrap_curl_multi_remove_handle(CURLM* multi, CURL* easy);

CURLMcode __wrap_curl_multi_add_handle(CURLM* multi, CURL* easy) {
    ++count;
    return __real_curl_multi_add_handle(multi, easy);
}

CURLMcode __wrap_curl_multi_remove_handle(CURLM* multi, CURL* easy) {
    --count;
    return __real_curl_multi_remove_handle(multi, easy);
}
}

int VexmoraSDK::TransferCount::now() {
    return count;
}
