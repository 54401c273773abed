// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace VexmoraSDK::ExitRun {

/// Runs at least `times` processes that exit while ads are in all states: from each of the places
/// below or from `onlyPlace` alone, at once and after some events. Returns how many did not exit
/// with their status and without a word.
int runAll(int times, const std::string& onlyPlace);

/// One such process, with the library's resources in `folder`: it exits at "the end of main", in "a
/// call of the main thread", in "a call of a delivery thread" or in "another thread" once there
/// were as many `events`; or beside what never returns: at the end of main "beside a call that
/// waits" or "beside a decoder", both on a delivery thread, or in "another thread beside a block
/// that waits" on the main thread.
int exitFrom(const std::string& place, int events, const std::string& folder);

}  // namespace VexmoraSDK::ExitRun
