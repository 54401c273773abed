// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Application.h"

#include <glib.h>

#include "VexmoraSDK/platform/foundation/AllowedSchemes.h"

namespace VexmoraSDK::platform {

// The opener is a grandchild process, so the app need not wait for it.
void Application::openUrl(const Url& url) {
    if (!isAllowed(url)) return;
    char opener[] = "xdg-open";
    std::string address = url.text();
    char* arguments[] = {opener, address.data(), nullptr};
    const auto flags =
        static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_LEAVE_DESCRIPTORS_OPEN |
                                 G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    g_spawn_async(nullptr, arguments, nullptr, flags, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace VexmoraSDK::platform
