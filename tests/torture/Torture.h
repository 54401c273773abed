// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/torture/FailingCalls.h"

namespace VexmoraSDK {

/// Runs a short scenario once for each call that can fail, in a process of its own in which that
/// call fails, and compares how it ends with what is allowed.
class Torture {
 public:
    /// Runs in the child process: prepares itself, has the calls counted with `begin`, and returns
    /// its outcome. Calls are counted until the process has exited.
    using Scenario = std::function<std::string(const std::function<void()>& begin)>;
    /// A pattern of endings, and one of the names of calls whose failure may end so.
    struct Allowed {
        std::string ending;
        std::string calls;
    };

    /// Prints how many calls failed, and how often the scenario ended how.
    static void run(const std::string& name, const Scenario& scenario,
                    const std::vector<Allowed>& allowed);
};

}  // namespace VexmoraSDK
