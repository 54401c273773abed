// SPDX-License-Identifier: MIT
// The fatal stops of the fuzzers are exceptions; they are linked instead of the library's own.
#include "VexmoraSDK/platform/foundation/Fatal.h"

#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK::platform {

void fatalError(std::string_view) {
    throw FatalStop();
}

void fatalNil() {
    throw FatalStop();
}

void fatalConversion(std::string_view, std::string_view) {
    throw FatalStop();
}

void unimplementedInitializer(std::string_view, std::string_view, std::string_view) {
    throw FatalStop();
}

}  // namespace VexmoraSDK::platform
