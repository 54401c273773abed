#pragma once

#include <string>

namespace VexmoraSDK::Leaving {

/// Has processes exit so many times with ads at every stage: from each place, right at the start
/// and after some outcomes. Each must end well and quietly. How many did not.
int leave(int times);

/// What one of these processes does, with its library in this folder: exits at "the end of main",
/// or in "a call of the main thread", "a call of a delivery thread" or "another thread".
int leaveFrom(const std::string& place, int outcomes, const std::string& folder);

}  // namespace VexmoraSDK::Leaving
