// SPDX-License-Identifier: MIT
#include "VexmoraSDK/config/Config.h"

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"

namespace VexmoraSDK {

using platform::unwrap;

const Config& Config::instance() {
    static const platform::NoDestructor<Config> instance;
    return *instance;
}

Config::Config() : store_(loadDefaults()) {}

platform::Dictionary Config::loadDefaults() {
    const auto& bundle = platform::Bundle::library();
    const auto folder = bundle.folder().string();
    const platform::FatalContext context("resource folder", folder);
    constexpr auto kEntry = "entry of Info.plist";
    const auto& entry = unwrap(bundle.objectForInfoDictionaryKey(configurationPlistKey), kEntry,
                               configurationPlistKey);
    const auto* name = entry.as<std::string>();
    if (!name) {
        const platform::FatalContext where(kEntry, configurationPlistKey);
        platform::fatalConversion(entry.typeName(), "string");
    }
    const auto file = unwrap(bundle.pathForResource(*name, "plist"), "property list", *name);
    return unwrap(platform::PropertyList::dictionaryWithContentsOfFile(file), "property list",
                  *name);
}

}  // namespace VexmoraSDK
