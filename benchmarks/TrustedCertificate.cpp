// SPDX-License-Identifier: MIT
#include "benchmarks/TrustedCertificate.h"

#include <curl/curl.h>

#include <QtNetwork/QSslConfiguration>

namespace {

std::string trusted;

}  // namespace

// The linker redirects all calls of curl_multi_add_handle here.
extern "C" {
CURLMcode addHandle(CURLM* multi, CURL* easy) __asm__("__real_curl_multi_add_handle");
CURLMcode addTrustingHandle(CURLM* multi, CURL* easy) __asm__("__wrap_curl_multi_add_handle");

CURLMcode addTrustingHandle(CURLM* multi, CURL* easy) {
    if (!trusted.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, trusted.c_str());
    return addHandle(multi, easy);
}
}

namespace VexmoraSDK::benchmarks {

void trustCertificate(const std::string& file) {
    trusted = file;
    auto configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificates(QString::fromStdString(file));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

}  // namespace VexmoraSDK::benchmarks
