// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK {

/// The library's settings: the property list that "ConfigurationPlist" in the bundle's Info.plist
/// names. Read once per process; any thread.
class Config {
 public:
    static constexpr std::string_view configurationPlistKey = "ConfigurationPlist";

    /// The one instance, made on first use. A missing or unreadable settings file is a fatal stop.
    static const Config& instance();

    /// The setting; absent if it is missing or no `T` (`bool`, `std::int64_t`, `double`,
    /// `std::string`, …).
    template <class T>
    std::optional<T> settingForKey(std::string_view key) const {
        const auto found = store_.find(key);
        if (found == store_.end()) return std::nullopt;
        const T* value = found->second.as<T>();
        return value ? std::optional<T>(*value) : std::nullopt;
    }

 private:
    friend class platform::NoDestructor<Config>;

    Config();
    static platform::Dictionary loadDefaults();

    platform::Dictionary store_;
};

}  // namespace VexmoraSDK
