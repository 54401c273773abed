// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/HttpResponse.h"

#include <algorithm>

namespace VexmoraSDK::platform {
namespace {

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lowerCase, lowerCase);
}

std::vector<std::string_view> listElements(std::string_view list) {
    std::vector<std::string_view> elements;
    const auto add = [&](std::size_t begin, std::size_t end) {
        const auto element = trimmed(list.substr(begin, end - begin));
        if (!element.empty()) elements.push_back(element);
    };
    std::size_t begin = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] == '"') isQuoted = !isQuoted;
        if (isQuoted && list[i] == '\\') ++i;
        if (isQuoted || list[i] != ',') continue;
        add(begin, i);
        begin = i + 1;
    }
    add(begin, list.size());
    return elements;
}

void HttpHeaders::add(std::string_view line) {
    const bool continues = line.starts_with(' ') || line.starts_with('\t');
    if (continues && !lines_.empty()) lines_.back() = ' ';
    lines_.append(trimmed(line)).push_back('\n');
}

std::vector<std::string_view> HttpHeaders::values(std::string_view name) const {
    std::vector<std::string_view> values;
    for (std::string_view rest = lines_; !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() + 1);
        if (!equalIgnoringCase(line.substr(0, name.size()), name)) continue;
        const auto colonAndValue = trimmed(line.substr(name.size()));
        if (colonAndValue.starts_with(':')) values.push_back(trimmed(colonAndValue.substr(1)));
    }
    return values;
}

std::string HttpHeaders::combined(std::string_view name) const {
    std::string combined;
    for (const auto value : values(name))
        combined.append(combined.empty() ? "" : ", ").append(value);
    return combined;
}

}  // namespace VexmoraSDK::platform
