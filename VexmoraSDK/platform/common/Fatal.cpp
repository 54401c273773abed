#include "VexmoraSDK/platform/Fatal.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace VexmoraSDK::platform {
namespace {

[[noreturn]] void stop(const std::string& report) noexcept {
    std::fputs(report.c_str(), stderr);
    std::fflush(stderr);
    std::abort();
}

}  // namespace

void fatalError(std::string_view message) noexcept {
    stop("fatal error: " + std::string(message) + '\n');
}

void fatalNil() noexcept {
    fatalError("unexpectedly found nil while unwrapping an Optional value");
}

void fatalConversion(std::string_view from, std::string_view to) noexcept {
    fatalError("could not cast value of type '" + std::string(from) + "' to '" + std::string(to) +
               "'");
}

void unimplementedInitializer(std::string_view initializer, std::string_view className,
                              std::string_view location) noexcept {
    stop(std::string(location) + "fatal error: use of unimplemented initializer '" +
         std::string(initializer) + "' for class '" + std::string(className) + "'\n");
}

}  // namespace VexmoraSDK::platform
