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

    /// Besides those allowed a stop for lack of memory is, after any call that takes memory of C++.
    static void run(const std::string& name, const Scenario& scenario,
                    const std::vector<Allowed>& allowed);

    /// Every call fails in turn, or one of so many.
    static inline long step = 1;
};

}  // namespace VexmoraSDK
