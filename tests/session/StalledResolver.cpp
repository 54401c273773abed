// SPDX-License-Identifier: MIT
#include "tests/session/StalledResolver.h"

#include <dlfcn.h>
#include <netdb.h>

#include <string_view>

/// The linker prefers this to the C library's function, for libcurl too.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    using VexmoraSDK::StalledResolver;
    if (name && name == std::string_view(StalledResolver::kName)) {
        StalledResolver::wait();
        return EAI_NONAME;
    }
    static const auto next =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name, service, hints, result);
}
