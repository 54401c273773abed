// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "adserver/Catalog.h"

namespace VexmoraSDK {

/// The shipped catalogue, with a placement of a native ad for each picture that is hard to decode.
inline Catalog catalogWithBombs() {
    Catalog catalog = Catalog::load();
    for (const auto& bomb : std::filesystem::directory_iterator(VEXMORA_BOMBS)) {
        catalog.placements[bomb.path().stem()] = {
            {Creative::kNativeAdType, "/landing/bomb", bomb.path(), "A bomb", "Boom.", "Acme"}};
    }
    return catalog;
}

}  // namespace VexmoraSDK
