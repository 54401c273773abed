// SPDX-License-Identifier: MIT
#pragma once

#include "adserver/AdServer.h"
#include "tests/LibraryFolder.h"

namespace VexmoraSDK {

/// The ad server of this process. Its ads' pictures are red on the left and blue on the right.
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
