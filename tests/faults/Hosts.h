// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {

/// The request template of a mock ad server that the test program shares with the programs of its
/// death tests. Besides its own ads it serves the pictures of the folder `bombs`, each in a native
/// ad of a placement named after the file.
std::string requestUrlFormat();

/// Shows an ad for each promise, all at once, and returns the events of each, when no more can
/// come. Fails the test if that takes too long.
std::vector<std::string> show(const std::vector<Promise>& promises);

/// Shows one ad and exits with 0 if the events are as promised and the process never had more than
/// `maxMemory` MiB of memory.
[[noreturn]] void showAlone(const Promise& promise, long maxMemory);

}  // namespace VexmoraSDK
