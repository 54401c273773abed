#pragma once

namespace VexmoraSDK::TransferCount {

/// How many transfers are under way. Any thread.
int now();

}  // namespace VexmoraSDK::TransferCount
