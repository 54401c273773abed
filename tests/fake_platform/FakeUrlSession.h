// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/foundation/Value.h"

/// The network of the tests: it records what was asked and answers when it is told to. An answer
/// is delivered on a thread made for it, which has ended when the call returns. Any thread.
namespace VexmoraSDK::platform::FakeUrlSession {

/// Forgets all that was asked; what is still open is never answered.
void reset();

/// The addresses of the transfers that were started since, in this order.
std::vector<std::string> requests();

// Each of these ends the oldest open transfer of that address; when there is none, it throws.

void answer(std::string_view url, std::string_view body);
/// With neither a body nor an error.
void answerWithoutBody(std::string_view url);
/// With an error of the transport.
void fail(std::string_view url, std::optional<Dictionary> userInfo = std::nullopt);

}  // namespace VexmoraSDK::platform::FakeUrlSession
