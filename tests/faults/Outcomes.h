#pragma once

#include <string>
#include <vector>

#include "VexmoraSDK/types/VexmoraViewType.h"

namespace VexmoraSDK {

/// What docs/reliability.md promises of the ads of a container, for each kind of view: what comes
/// of them, in the words of `Ear`, or "stop" where the process ends.
struct Promise {
    std::string container;
    std::string inBanner;
    std::string inNative;
    std::string inInterstitial;

    const std::string& in(VexmoraViewType kind) const {
        return kind == VexmoraViewType::banner   ? inBanner
               : kind == VexmoraViewType::native ? inNative
                                                 : inInterstitial;
    }
};

/// Of all faults of the mock ad server but those of sheer size.
std::vector<Promise> promises();

/// The cells of the page's tables of that name, row by row, without the headings.
std::vector<std::vector<std::string>> rowsOf(const std::string& table);

}  // namespace VexmoraSDK
