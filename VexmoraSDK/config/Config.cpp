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

Config::Config() {
    registerDefaultConfig();
}

void Config::registerDefaultConfig() {
    store_ = loadDefaults();
}

platform::Dictionary Config::loadDefaults() {
    const auto& bundle = platform::Bundle::library();
    const auto& entry = unwrap(bundle.objectForInfoDictionaryKey(configurationPlistKey));
    const auto* name = entry.as<std::string>();
    if (!name) platform::fatalConversion(entry.typeName(), "string");
    return unwrap(platform::PropertyList::dictionaryWithContentsOfFile(
        unwrap(bundle.pathForResource(*name, "plist"))));
}

}  // namespace VexmoraSDK
