// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/torture/FailingCalls.h"

namespace VexmoraSDK {

/// Runs a short scenario again and again, each time in a process of its own in which another call
/// fails, and compares how it ends with what is allowed.
class Torture {
 public:
    /// Runs in the child: prepares itself, has the calls counted with `begin`, and says how it came
    /// out. What is still running by then goes on to count until the process has exited.
    using Scenario = std::function<std::string(const std::function<void()>& begin)>;
    /// A pattern of endings, and of the calls whose failure may lead there.
    struct Allowed {
        std::string ending;
        std::string calls;
    };

    /// Prints a row of how many calls failed and how the scenario then ended.
    static void run(const std::string& name, const Scenario& scenario,
                    const std::vector<Allowed>& allowed);
};

}  // namespace VexmoraSDK
