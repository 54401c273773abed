#include "VexmoraSDK/platform/Url.h"

#include <algorithm>
#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>

namespace VexmoraSDK::platform {
namespace {

boost::urls::url_view parsed(const std::string& text) {
    return boost::urls::parse_uri_reference(text).value();
}

}  // namespace

std::optional<Url> Url::fromString(std::string_view text) {
    if (text.empty() || !boost::urls::parse_uri_reference(text)) return std::nullopt;
    return Url(std::string(text));
}

std::string Url::scheme() const {
    std::string scheme(parsed(text_).scheme());
    std::ranges::transform(scheme, scheme.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return scheme;
}

std::string Url::host() const {
    return std::string(parsed(text_).encoded_host());
}

}  // namespace VexmoraSDK::platform
