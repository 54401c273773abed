// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/CachePolicy.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "VexmoraSDK/platform/http/HttpDate.h"

namespace VexmoraSDK::platform {
namespace {

using Seconds = std::chrono::seconds;
using Time = CachePolicy::Time;

/// The largest size of the fields that are stored with the body. The validators are sent back to
/// the server.
constexpr std::size_t kMaxBytes = 2048;

/// RFC 9111 has larger numbers of seconds read as this one.
constexpr std::int64_t kMaxSeconds = std::int64_t{1} << 31;

bool isToken(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
    });
}

/// An element of a list `name, name=value, name="value"`.
struct Directive {
    std::string_view name;
    std::string_view value;
};

/// Absent when the text is no such list.
std::optional<std::vector<Directive>> directivesOf(std::string_view text) {
    std::vector<Directive> directives;
    for (const auto element : listElements(text)) {
        const auto equals = element.find('=');
        const auto name = element.substr(0, equals);
        const auto value = equals == element.npos ? "" : element.substr(equals + 1);
        const bool isQuoted = value.size() > 1 && value.starts_with('"') && value.ends_with('"');
        if (!isToken(name) || (equals != element.npos && !isQuoted && !isToken(value)))
            return std::nullopt;
        directives.push_back({name, value});
    }
    return directives;
}

std::optional<Seconds> readSeconds(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return Seconds(error == std::errc{} ? std::min(number, kMaxSeconds) : kMaxSeconds);
}

bool hasName(const std::vector<Directive>& directives, std::string_view name) {
    return std::ranges::any_of(directives, [name](const Directive& directive) {
        return equalIgnoringCase(directive.name, name);
    });
}

/// The freshness lifetime; absent when the response must be revalidated before each use.
std::optional<Seconds> lifetime(const CachePolicy& policy, Time date) {
    const auto directives = directivesOf(policy.cacheControl);
    if (!directives || hasName(*directives, "no-cache")) return std::nullopt;
    std::optional<std::string_view> maxAge;
    for (const auto& [name, value] : *directives) {
        if (!equalIgnoringCase(name, "max-age")) continue;
        if (maxAge) return std::nullopt;
        maxAge = value;
    }
    if (maxAge) return readSeconds(*maxAge);
    const auto expires = readHttpDate(policy.expires);
    return expires ? std::optional(*expires - date) : std::nullopt;
}

/// Whether the text is `"..."` or `W/"..."`, of characters that a header may hold.
bool isEntityTag(std::string_view text) {
    if (text.starts_with("W/")) text.remove_prefix(2);
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') return false;
    text = text.substr(1, text.size() - 2);
    return std::ranges::all_of(text,
                               [](unsigned char c) { return c > ' ' && c != '"' && c != 127; });
}

bool isDate(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; }) &&
           readHttpDate(text);
}

}  // namespace

CachePolicy CachePolicy::of(const HttpHeaders& headers) {
    return {.cacheControl = headers.combined("Cache-Control"),
            .vary = headers.combined("Vary"),
            .date = headers.combined("Date"),
            .age = headers.combined("Age"),
            .expires = headers.combined("Expires"),
            .etag = headers.combined("ETag"),
            .lastModified = headers.combined("Last-Modified"),
            .setsCookie = !headers.values("Set-Cookie").empty()};
}

bool CachePolicy::isStorable() const {
    const auto directives = directivesOf(cacheControl);
    const auto varying = directivesOf(vary);
    if (setsCookie || bytes() > kMaxBytes || !directives || !varying) return false;
    return !hasName(*directives, "no-store") && !hasName(*varying, "*") &&
           !hasName(*varying, "Cookie");
}

CachePolicy::Time CachePolicy::freshUntil(Time requestTime, Time responseTime) const {
    const auto sent = date.empty() ? responseTime : readHttpDate(date);
    const auto ageWhenSent = age.empty() ? Seconds(0) : readSeconds(age);
    const auto fresh = sent ? lifetime(*this, *sent) : std::nullopt;
    if (!fresh || !ageWhenSent) return responseTime;
    return responseTime + *fresh -
           std::max(
               {Seconds(0), responseTime - *sent, *ageWhenSent + (responseTime - requestTime)});
}

std::vector<std::string> CachePolicy::conditionalHeaders() const {
    std::vector<std::string> headers;
    if (isEntityTag(etag)) headers.push_back("If-None-Match: " + etag);
    if (isDate(lastModified)) headers.push_back("If-Modified-Since: " + lastModified);
    return headers;
}

void CachePolicy::update(const CachePolicy& newer) {
    for (const auto field : {&CachePolicy::cacheControl, &CachePolicy::vary, &CachePolicy::expires,
                             &CachePolicy::etag, &CachePolicy::lastModified}) {
        if (!(newer.*field).empty()) this->*field = newer.*field;
    }
    // These belong to the one message that carried them.
    date = newer.date;
    age = newer.age;
    setsCookie = newer.setsCookie;
}

std::size_t CachePolicy::bytes() const {
    return cacheControl.size() + vary.size() + date.size() + age.size() + expires.size() +
           etag.size() + lastModified.size();
}

}  // namespace VexmoraSDK::platform
