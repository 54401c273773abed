#pragma once

#include <cstdint>
#include <optional>

namespace VexmoraSDK {

/// What an error that the host hears of can be. None of them is retried by the library; assigning
/// the view's `containerId` again asks anew.
enum class VexmoraErrorCodes : std::intptr_t {
    /// A native view had no ad when it was to be drawn. Retrying may help.
    UnknownError = 1,
    /// The answer was no JSON or an empty list; followed by `NoFill`. Retry later.
    ParsingError = 2,
    /// The ad server was not reached or its answer was cut short. Retry when the network is back.
    RequestError = 3,
    /// No view shows ads of the type that the host asked for. Do not retry.
    InvalidAdTypeError = 4,
    /// The server had no ad, or its answer could not be read. Retry later, or show something else.
    NoFill = 5,
    /// Defined for hosts; the library never reports it.
    InvalidViewTypeError = 6,
    /// The picture of a native ad was none, too large, or not there yet when the ad was drawn.
    /// Retry later: the next ad may have one.
    ImageRequestError = 7,
};

/// The code of that raw value; absent when there is none.
constexpr std::optional<VexmoraErrorCodes> errorCodeWithRawValue(std::intptr_t rawValue) {
    if (rawValue < 1 || rawValue > 7) return std::nullopt;
    return static_cast<VexmoraErrorCodes>(rawValue);
}

}  // namespace VexmoraSDK
