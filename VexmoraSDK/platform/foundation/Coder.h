// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Color.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK::platform {

/// A keyed archive: values under names, stored as a property list. Errors are archived with it and
/// views are loaded from it.
class VEXMORA_EXPORT Coder {
 public:
    /// An empty archive, to encode into.
    Coder() = default;
    /// An archive that holds these values.
    explicit Coder(Dictionary values) : values_(std::move(values)) {}
    /// The archive that `data()` wrote, whatever its size; absent for bytes that are no
    /// property-list dictionary and for a dictionary that `data()` cannot have written.
    static std::optional<Coder> fromData(const Data& data) noexcept;

    void encode(std::string key, Value value) noexcept;
    /// The value under `key` when it is a `T` of a `Value`'s alternatives, else null. Valid while
    /// the coder is.
    template <class T>
    const T* decode(std::string_view key) const {
        const auto found = values_.find(key);
        return found == values_.end() ? nullptr : found->second.as<T>();
    }

    /// A number under `key`; absent for anything else.
    std::optional<double> number(std::string_view key) const;
    /// An array of four numbers (x, y, width, height) under `key`; absent for anything else.
    std::optional<Rect> rect(std::string_view key) const;
    /// An array of four numbers (red, green, blue, alpha) under `key`; absent for anything else.
    std::optional<Color> color(std::string_view key) const;

    /// The archive as a property list. It keeps every value exactly, whatever the bytes of its
    /// texts; what is nested deeper than 512 levels is emptied.
    Data data() const noexcept;

 private:
    Dictionary values_;
};

}  // namespace VexmoraSDK::platform
