// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Fatal.h"

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace VexmoraSDK::platform {
namespace {

/// Prints the report piece by piece, because there may be no memory to join it, and the context.
[[noreturn]] void stop(std::initializer_list<std::string_view> report) noexcept {
    flockfile(stderr);
    for (const auto piece : report) {
        if (!piece.empty()) std::fwrite(piece.data(), 1, piece.size(), stderr);
    }
    FatalContext::print();
    std::fflush(stderr);
    funlockfile(stderr);
    std::abort();
}

}  // namespace

void fatalError(std::string_view message) {
    stop({"fatal error: ", message, "\n"});
}

void fatalNil() {
    fatalError("unexpectedly found nil while unwrapping an Optional value");
}

void fatalConversion(std::string_view from, std::string_view to) {
    stop({"fatal error: could not cast value of type '", from, "' to '", to, "'\n"});
}

void unimplementedInitializer(std::string_view initializer, std::string_view className,
                              std::string_view location) {
    stop({location, "fatal error: use of unimplemented initializer '", initializer, "' for class '",
          className, "'\n"});
}

}  // namespace VexmoraSDK::platform
