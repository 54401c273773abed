#pragma once

namespace VexmoraSDK {

/// While one lives, the name `kName` is not resolved; afterwards it does not exist.
class StalledResolver {
 public:
    static constexpr auto kName = "stalled.invalid";

    StalledResolver();
    ~StalledResolver();

    /// Returns when somebody waits for the name; false when that takes too long.
    static bool waitForQuery();
};

}  // namespace VexmoraSDK
