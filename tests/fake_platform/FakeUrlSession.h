// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/foundation/Value.h"

/// The network of the tests: it records requests and completes them when a test says so. A
/// completion runs on a thread made for it, which has ended when the call returns. Any thread.
namespace VexmoraSDK::platform::FakeUrlSession {

/// Forgets all requests; those that are open never complete.
void reset();

/// The addresses of the transfers started since the last `reset`, in this order.
std::vector<std::string> requests();
/// Those of them that wait for the others where places are scarce.
std::vector<std::string> lowPriorityRequests();

// Each of these completes the oldest open transfer of that address, or throws when there is none.

void answer(std::string_view url, std::string_view body);
/// Completes with neither a body nor an error.
void answerWithoutBody(std::string_view url);
/// Completes with a transport error.
void fail(std::string_view url, std::optional<Dictionary> userInfo = std::nullopt);

}  // namespace VexmoraSDK::platform::FakeUrlSession
