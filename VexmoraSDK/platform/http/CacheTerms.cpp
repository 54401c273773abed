#include "VexmoraSDK/platform/http/CacheTerms.h"

#include <curl/curl.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

using Seconds = std::chrono::seconds;
using Time = CacheTerms::Time;

/// They are kept beside the body, and some go back to the server.
constexpr std::size_t kMostBytes = 2048;

/// What stands for all numbers that are larger.
constexpr std::int64_t kForever = std::int64_t{1} << 31;

bool isOfToken(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

std::string_view takeToken(std::string_view& text) {
    const auto end = std::ranges::find_if_not(text, isOfToken);
    const auto token = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(token.size());
    return token;
}

/// With its quotes; empty when there is no end to it.
std::string_view takeQuoted(std::string_view& text) {
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '"') {
            const auto quoted = text.substr(0, i + 1);
            text.remove_prefix(quoted.size());
            return quoted;
        }
    }
    return {};
}

/// Of a list `name, name=value, name="value"`; the name in lower case.
struct Element {
    std::string name;
    std::string_view value;
};

std::optional<std::vector<Element>> elements(std::string_view text) {
    std::vector<Element> elements;
    while (true) {
        skipBlanks(text);
        if (!text.empty() && text.front() != ',') {
            Element element{std::string(takeToken(text)), {}};
            if (element.name.empty()) return std::nullopt;
            if (text.starts_with('=')) {
                text.remove_prefix(1);
                element.value = text.starts_with('"') ? takeQuoted(text) : takeToken(text);
                if (element.value.empty()) return std::nullopt;
            }
            for (char& c : element.name) {
                if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
            }
            elements.push_back(std::move(element));
            skipBlanks(text);
        }
        if (text.empty()) return elements;
        if (text.front() != ',') return std::nullopt;
        text.remove_prefix(1);
    }
}

std::optional<Seconds> readSeconds(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return Seconds(error == std::errc{} ? std::min(number, kForever) : kForever);
}

std::optional<Time> readDate(const std::string& text) {
    constexpr std::string_view kLongest = "Wednesday, 11-Nov-26 12:00:00 GMT";
    const auto date = curl_getdate(text.c_str(), nullptr);
    if (date == -1 || text.size() > kLongest.size()) return std::nullopt;
    return Time(Seconds(date));
}

/// For how long the answer is fresh; absent when it must not be used without asking.
std::optional<Seconds> lifetime(const CacheTerms& terms, Time date) {
    const auto directives = elements(terms.cacheControl);
    if (!directives) return std::nullopt;
    std::optional<std::string_view> maxAge;
    for (const auto& [name, value] : *directives) {
        if (name == "no-cache" || (name == "max-age" && maxAge)) return std::nullopt;
        if (name == "max-age") maxAge = value;
    }
    if (maxAge) return readSeconds(*maxAge);
    if (terms.expires.empty()) return std::nullopt;
    const auto expires = readDate(terms.expires);
    return expires ? std::optional(*expires - date) : std::nullopt;
}

/// `"..."` or `W/"..."`, with nothing in it that would not fit a header.
bool isEntityTag(std::string_view text) {
    if (text.starts_with("W/")) text.remove_prefix(2);
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') return false;
    text = text.substr(1, text.size() - 2);
    return std::ranges::all_of(text,
                               [](unsigned char c) { return c > ' ' && c != '"' && c != 127; });
}

bool isDate(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; }) && readDate(text);
}

}  // namespace

bool CacheTerms::allowKeeping() const {
    const auto directives = elements(cacheControl);
    const auto varying = elements(vary);
    if (setsCookie || bytes() > kMostBytes || !directives || !varying) return false;
    return std::ranges::find(*directives, "no-store", &Element::name) == directives->end() &&
           std::ranges::none_of(*varying, [](const Element& header) {
               return header.name == "*" || header.name == "cookie";
           });
}

CacheTerms::Time CacheTerms::freshUntil(Time asked, Time received) const {
    const auto sent = date.empty() ? received : readDate(date);
    const auto before = age.empty() ? Seconds(0) : readSeconds(age);
    const auto fresh = sent ? lifetime(*this, *sent) : std::nullopt;
    if (!fresh || !before) return received;
    return received + *fresh -
           std::max({Seconds(0), received - *sent, *before + (received - asked)});
}

std::vector<std::string> CacheTerms::conditions() const {
    std::vector<std::string> headers;
    if (isEntityTag(etag)) headers.push_back("If-None-Match: " + etag);
    if (isDate(lastModified)) headers.push_back("If-Modified-Since: " + lastModified);
    return headers;
}

void CacheTerms::renew(const CacheTerms& newer) {
    for (const auto value : {&CacheTerms::cacheControl, &CacheTerms::vary, &CacheTerms::expires,
                             &CacheTerms::etag, &CacheTerms::lastModified}) {
        if (!(newer.*value).empty()) this->*value = newer.*value;
    }
    // These are of the way that an answer has taken, and of no other.
    date = newer.date;
    age = newer.age;
    setsCookie = newer.setsCookie;
}

std::size_t CacheTerms::bytes() const {
    return cacheControl.size() + vary.size() + date.size() + age.size() + expires.size() +
           etag.size() + lastModified.size();
}

}  // namespace VexmoraSDK::platform
