#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/platform/Value.h"

namespace VexmoraSDK::platform {

/// A keyed archive: values under names, stored as a property list. Errors are archived with it and
/// views are loaded from it.
class Coder {
 public:
    /// An empty archive, to encode into.
    Coder() = default;
    /// An archive that holds these values.
    explicit Coder(Dictionary values) : values_(std::move(values)) {}
    /// The archive that `data()` wrote; absent for bytes that are no property-list dictionary.
    static std::optional<Coder> fromData(const Data& data);

    void encode(std::string key, Value value);
    /// The value under `key`, or null. Valid while the coder is.
    const Value* decode(std::string_view key) const;

    /// The archive as a property list.
    Data data() const;

 private:
    Dictionary values_;
};

}  // namespace VexmoraSDK::platform
