#pragma once

#include <string>
#include <vector>

namespace VexmoraSDK {

enum class Kind { banner, native, interstitial };

/// Someone who asks for an ad.
struct Host {
    std::string container;
    Kind kind;
};

/// Has all hosts show their ads at once. Tells, when nothing is under way any more, what each has
/// heard: the names of the errors, "drawn", or "nothing". Fails the test where a task of the
/// session completes twice, or never.
std::vector<std::string> show(const std::vector<Host>& hosts);

/// The same for one, in the process of a death test. Says on the error output "host: ", what was
/// heard, ": " and the most memory that the process ever had, in MiB; and exits.
[[noreturn]] void showAndTell(const Host& host);

}  // namespace VexmoraSDK
