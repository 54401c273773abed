// SPDX-License-Identifier: MIT
#include "demo/LocalAdServer.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"

using VexmoraSDK::AdServer;
using VexmoraSDK::Catalog;
using VexmoraSDK::platform::Bundle;
namespace PropertyList = VexmoraSDK::platform::PropertyList;

LocalAdServer::LocalAdServer() : server_(std::make_unique<AdServer>(Catalog::load())) {
    if (server_->port() == 0) throw std::runtime_error("no port is free for the ad server");

    // These are the shipped resources with settings of our own.
    std::string name = std::filesystem::temp_directory_path() / "vexmora-demo-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("no place for the settings");
    const std::filesystem::path folder = resources_ = name;
    std::filesystem::copy(Bundle::shippedLibraryFolder(), folder,
                          std::filesystem::copy_options::recursive);
    const auto write = [&](const char* file, std::string key, std::string value) {
        const auto list = PropertyList::binary({{std::move(key), std::move(value)}});
        std::ofstream stream(folder / file);
        stream << VexmoraSDK::platform::textOf(list);
        if (!stream.flush()) throw std::runtime_error("cannot write to " + folder.string());
    };
    write("Info.plist", "ConfigurationPlist", "settings");
    write("settings.plist", "requestUrlFormat", server_->requestUrlFormat());
    Bundle::setLibraryFolder(folder);
}

LocalAdServer::~LocalAdServer() {
    std::error_code ignored;
    if (!resources_.empty()) std::filesystem::remove_all(resources_, ignored);
}
