// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace VexmoraSDK {

/// The codes of the errors reported to the host. A view asks once. An `AdSlot` with a refresh
/// interval asks again.
enum class VexmoraErrorCodes : std::intptr_t {
    /// A native view had no ad when it was drawn. Ask again at most once.
    UnknownError = 1,
    /// The response was not JSON or was an empty list; followed by `NoFill`. Ask again later.
    ParsingError = 2,
    /// The ad server was not reached or its response was truncated. Ask again when the network is
    /// back.
    RequestError = 3,
    /// No view shows ads of the type that the host asked for. Do not ask again.
    InvalidAdTypeError = 4,
    /// The server had no ad, or its response could not be read. Ask again later, or show something
    /// else.
    NoFill = 5,
    /// Defined for hosts; the library never reports it.
    InvalidViewTypeError = 6,
    /// The picture of a native ad could not be decoded, was too large, or had not arrived when the
    /// ad was drawn. Ask again later: the next ad may have one.
    ImageRequestError = 7,
};

constexpr std::intptr_t rawValue(VexmoraErrorCodes code) {
    return static_cast<std::intptr_t>(code);
}

/// The code of a raw value; absent if no code has it.
constexpr std::optional<VexmoraErrorCodes> errorCodeWithRawValue(std::intptr_t rawValue) {
    if (rawValue < 1 || rawValue > 7) return std::nullopt;
    return static_cast<VexmoraErrorCodes>(rawValue);
}

}  // namespace VexmoraSDK
