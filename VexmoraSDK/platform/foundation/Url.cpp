// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Url.h"

#include <algorithm>
#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>

namespace VexmoraSDK::platform {

std::optional<Url> Url::fromString(std::string_view text) {
    if (text.empty()) return std::nullopt;
    const auto parsed = boost::urls::parse_uri_reference(text);
    if (!parsed) return std::nullopt;
    Url url{std::string(text)};
    url.schemeLength_ = parsed->scheme().size();
    if (const auto host = parsed->encoded_host(); !host.empty()) {
        url.hostPosition_ = static_cast<std::size_t>(host.data() - text.data());
        url.hostLength_ = host.size();
    }
    return url;
}

std::string Url::scheme() const {
    std::string scheme = text_.substr(0, schemeLength_);
    std::ranges::transform(scheme, scheme.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return scheme;
}

std::string_view Url::host() const {
    return std::string_view(text_).substr(hostPosition_, hostLength_);
}

}  // namespace VexmoraSDK::platform
