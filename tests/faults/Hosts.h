#pragma once

#include <string>
#include <vector>

#include "VexmoraSDK/types/VexmoraViewType.h"

namespace VexmoraSDK {

/// Someone who asks for an ad.
struct Host {
    std::string container;
    VexmoraViewType kind;
};

/// Of the mock ad server that the test program and those of its death tests share. It serves the
/// ads that come with it and, in placements named after the files of `bombs`, such pictures.
std::string requestUrlFormat();

/// Has all hosts show their ads at once. Tells, when nothing is under way any more, what each has
/// heard, in the words of `Ear`. Fails the test where a task of the session completes twice, or
/// never.
std::vector<std::string> show(const std::vector<Host>& hosts);

/// The same for one, in a process of its own that exits with 0 if that is heard and the process
/// never had more memory than so many MiB.
[[noreturn]] void showAlone(const Host& host, const std::string& expected, long mostMemory);

}  // namespace VexmoraSDK
