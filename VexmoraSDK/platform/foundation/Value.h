// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::platform {

class Value;

using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;
using Date = std::chrono::system_clock::time_point;

/// A value of property lists, JSON and the user information of errors. A default value is null,
/// which only JSON has.
class VEXMORA_EXPORT Value {
 public:
    using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string, Data,
                                 Date, Array, Dictionary>;

    Value() = default;
    template <class T>
    requires(std::constructible_from<Variant, T> && !std::same_as<T, Value>) Value(T value)
        : variant_(std::move(value)) {}

    /// The value when it is a `T` of the alternatives above, else null. Nothing is converted.
    template <class T>
    const T* as() const {
        return std::get_if<T>(&variant_);
    }

    bool isNull() const { return std::holds_alternative<std::monostate>(variant_); }

    /// The value of a number as an integer: a fraction is dropped, what lies beyond the range
    /// becomes the nearest end of it, and true and false are 1 and 0. Absent for anything else.
    std::optional<std::int64_t> integerValue() const;

    /// The value of a number; absent for anything else.
    std::optional<double> numberValue() const;

    /// The name of this value's type in fatal reports.
    std::string_view typeName() const;

    const Variant& variant() const { return variant_; }

    friend bool operator==(const Value& a, const Value& b) { return a.variant_ == b.variant_; }

 private:
    Variant variant_;
};

}  // namespace VexmoraSDK::platform
