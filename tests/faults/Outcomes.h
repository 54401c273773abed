// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// What docs/reliability.md promises for a container of the mock ad server and a kind of view: the
/// events of an `EventRecorder`, or "stop" if the process ends.
struct Promise {
    std::string container;
    VexmoraViewType kind;
    std::string events;
};

/// The promises for all faults except those that exceed every limit.
std::vector<Promise> promises();

/// The rows of the page's tables between the markers `table`, as cells, without headings.
std::vector<std::vector<std::string>> rowsOf(const std::string& table);

/// Whether only the view holds its ad, which means that the request for the picture has ended.
bool hasItsAdAlone(const VexmoraView& view);

}  // namespace VexmoraSDK
