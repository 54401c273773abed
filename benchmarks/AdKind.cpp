// SPDX-License-Identifier: MIT
#include "benchmarks/AdKind.h"

#include <cstdlib>
#include <iostream>

#include "VexmoraSDK/config/Config.h"

namespace VexmoraSDK::benchmarks {

const std::vector<AdKind>& AdKind::all() {
    static const std::vector<AdKind> kinds = {
        {"banner", VexmoraViewType::banner, VexmoraAdType::banner},
        {"native", VexmoraViewType::native, VexmoraAdType::native},
        {"interstitial", VexmoraViewType::interstitial, VexmoraAdType::mediumRectangle}};
    return kinds;
}

const AdKind& AdKind::named(std::string_view name) {
    for (const AdKind& kind : all()) {
        if (kind.name == name) return kind;
    }
    std::cerr << "no kind of ad is called " << name << '\n';
    std::exit(2);
}

std::shared_ptr<VexmoraView> AdKind::createView(std::shared_ptr<VexmoraDelegate> delegate) const {
    auto view = VexmoraViewFactory::createView(container, adType, std::move(delegate));
    if (isInterstitial()) {
        const auto [width, height] = QSizeF(screenSize());
        view->setFrame({{0, 0}, {width, height}});
    }
    return view;
}

std::string AdKind::address() const {
    std::string address = *Config::instance().settingForKey<std::string>("requestUrlFormat");
    const auto fill = [&](const std::string& value) {
        address.replace(address.find("%@"), 2, value);
    };
    fill(container);
    fill(std::to_string(static_cast<long>(adType)));
    return address;
}

}  // namespace VexmoraSDK::benchmarks
