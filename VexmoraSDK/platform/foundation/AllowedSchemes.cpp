// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/AllowedSchemes.h"

#include <mutex>
#include <set>
#include <string>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK::platform::Application {
namespace {

struct AllowedSchemes {
    std::mutex mutex;
    std::set<std::string> names{"http", "https", "mailto", "tel", "sms", "geo", "market"};
};

AllowedSchemes& allowedSchemes() {
    static NoDestructor<AllowedSchemes> schemes;
    return *schemes;
}

}  // namespace

void allowScheme(std::string_view scheme) {
    const auto url = Url::fromString(std::string(scheme) + ":");
    if (!url || url->scheme().size() != scheme.size()) return;
    const std::lock_guard lock(allowedSchemes().mutex);
    allowedSchemes().names.insert(url->scheme());
}

bool isAllowed(const Url& url) {
    const std::lock_guard lock(allowedSchemes().mutex);
    return allowedSchemes().names.contains(url.scheme());
}

}  // namespace VexmoraSDK::platform::Application
