// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Value.h"

#include <array>
#include <cmath>
#include <limits>

namespace VexmoraSDK::platform {
namespace {

std::int64_t truncated(double number) {
    using Limits = std::numeric_limits<std::int64_t>;
    // 2^63 is exact in a double, the largest integer is not.
    constexpr double kEnd = 9223372036854775808.0;
    if (number >= kEnd) return Limits::max();
    if (number < -kEnd) return Limits::min();
    // JSON parsers return NaN for 0e999.
    if (std::isnan(number)) return 0;
    return static_cast<std::int64_t>(number);
}

}  // namespace

std::optional<std::int64_t> Value::integerValue() const {
    if (const auto* boolean = as<bool>()) return *boolean ? 1 : 0;
    if (const auto* integer = as<std::int64_t>()) return *integer;
    if (const auto* number = as<double>()) return truncated(*number);
    return std::nullopt;
}

std::optional<double> Value::numberValue() const {
    if (const auto* integer = as<std::int64_t>()) return static_cast<double>(*integer);
    if (const auto* number = as<double>()) return *number;
    return std::nullopt;
}

std::string_view Value::typeName() const {
    static constexpr std::array<std::string_view, std::variant_size_v<Variant>> kNames = {
        "null", "boolean", "integer", "number", "string", "data", "date", "array", "dictionary"};
    return kNames[variant_.index()];
}

}  // namespace VexmoraSDK::platform
