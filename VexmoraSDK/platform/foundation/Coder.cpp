// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Coder.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "VexmoraSDK/platform/foundation/PropertyList.h"

namespace VexmoraSDK::platform {
namespace {

std::optional<std::array<double, 4>> fourNumbers(const Array* array) {
    std::array<double, 4> numbers{};
    if (!array || array->size() != numbers.size()) return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto number = (*array)[i].numberValue();
        if (!number) return std::nullopt;
        numbers[i] = *number;
    }
    return numbers;
}

// A property list holds no nulls, no dates more than 68 years from 2001 and no texts with a zero or
// half a character. To keep everything, an archive is written in printable ASCII: each other byte
// of a text becomes "%" and two hexadecimal digits; a null is "%n", and a date "%t" and its ticks.
constexpr std::string_view kNull = "%n";
constexpr std::string_view kDate = "%t";
constexpr std::string_view kDigits = "0123456789ABCDEF";

std::string archived(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c >= ' ' && c <= '~' && c != '%') {
            escaped += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return escaped;
}

std::string restored(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned byte = 0;
        const char* end = text.data() + std::min<std::size_t>(text.size(), 3);
        const bool escaped = text.size() >= 3 && text.front() == '%' &&
                             std::from_chars(text.data() + 1, end, byte, 16).ptr == end;
        plain += escaped ? static_cast<char>(byte) : text.front();
        text.remove_prefix(escaped ? 3 : 1);
    }
    return plain;
}

Value archived(const Value& value, int levels);

Dictionary archived(const Dictionary& values, int levels) {
    Dictionary result;
    for (const auto& [key, value] : values)
        result.emplace(archived(key), archived(value, levels));
    return result;
}

/// `value` in what property lists have, containers emptied that lie deeper than `levels`.
Value archived(const Value& value, int levels) {
    if (value.isNull()) return std::string(kNull);
    if (const auto* text = value.as<std::string>()) return archived(*text);
    if (const auto* date = value.as<Date>()) {
        return std::string(kDate) + std::to_string(date->time_since_epoch().count());
    }
    if (const auto* array = value.as<Array>()) {
        Array result;
        for (const auto& element : levels > 0 ? *array : Array())
            result.push_back(archived(element, levels - 1));
        return result;
    }
    if (const auto* dictionary = value.as<Dictionary>()) {
        return levels > 0 ? archived(*dictionary, levels - 1) : Dictionary();
    }
    return value;
}

Value restoredText(std::string_view text) {
    if (text == kNull) return {};
    if (text.starts_with(kDate)) {
        Date::rep ticks = 0;
        std::from_chars(text.data() + kDate.size(), text.data() + text.size(), ticks);
        return Date(Date::duration(ticks));
    }
    return restored(text);
}

Dictionary restored(const Dictionary& values);

Value restored(const Value& value) {
    if (const auto* text = value.as<std::string>()) return restoredText(*text);
    if (const auto* dictionary = value.as<Dictionary>()) return restored(*dictionary);
    if (const auto* array = value.as<Array>()) {
        Array result;
        for (const auto& element : *array)
            result.push_back(restored(element));
        return result;
    }
    return value;
}

Dictionary restored(const Dictionary& values) {
    Dictionary result;
    for (const auto& [key, value] : values)
        result.insert_or_assign(restored(std::string_view(key)), restored(value));
    return result;
}

}  // namespace

std::optional<Coder> Coder::fromData(const Data& data) noexcept {
    const auto values = PropertyList::dictionary(data);
    if (!values) return std::nullopt;
    return Coder(restored(*values));
}

void Coder::encode(std::string key, Value value) noexcept {
    values_.insert_or_assign(std::move(key), std::move(value));
}

std::optional<double> Coder::number(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : found->second.numberValue();
}

std::optional<Rect> Coder::rect(std::string_view key) const {
    const auto numbers = fourNumbers(decode<Array>(key));
    if (!numbers) return std::nullopt;
    const auto [x, y, width, height] = *numbers;
    return Rect{{x, y}, {width, height}};
}

std::optional<Color> Coder::color(std::string_view key) const {
    const auto numbers = fourNumbers(decode<Array>(key));
    if (!numbers) return std::nullopt;
    const auto [red, green, blue, alpha] = *numbers;
    return Color{red, green, blue, alpha};
}

Data Coder::data() const noexcept {
    return PropertyList::binary(archived(values_, PropertyList::kMaxLevels - 1));
}

}  // namespace VexmoraSDK::platform
