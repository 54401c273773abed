#pragma once

#include <string>

namespace VexmoraSDK::Site {

/// Of the mock ad server that the test program and the programs of its death tests share. It serves
/// the ads that come with it and, in the placements "bomb-FORMAT", one whose picture says that it
/// is enormous.
std::string requestUrlFormat();

}  // namespace VexmoraSDK::Site
