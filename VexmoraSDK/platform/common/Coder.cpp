#include "VexmoraSDK/platform/Coder.h"

#include <array>

#include "VexmoraSDK/platform/PropertyList.h"

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

}  // namespace

std::optional<Coder> Coder::fromData(const Data& data) noexcept {
    auto values = PropertyList::dictionary(data);
    if (!values) return std::nullopt;
    return Coder(std::move(*values));
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
    return PropertyList::xml(values_);
}

}  // namespace VexmoraSDK::platform
