// SPDX-License-Identifier: MIT
#pragma once

#include "adserver/AdServer.h"
#include "tests/LibraryFolder.h"

namespace VexmoraSDK {

/// The server that the library asks for its ads in this process. The pictures of these are red at
/// the left and blue at the right.
class LocalAds {
 public:
    static AdServer& server() {
        static LocalAds ads;
        return ads.server_;
    }

 private:
    AdServer server_{Catalog::load(VEXMORA_TEST_ADS)};
    LibraryFolder library_{server_.requestUrlFormat()};
};

}  // namespace VexmoraSDK
