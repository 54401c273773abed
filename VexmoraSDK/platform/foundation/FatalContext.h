// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace VexmoraSDK::platform {

/// Says where a fatal stop happens. While it lives, the report of a stop on its thread has a second
/// line that names it and those around it, the innermost first:
///
///     fatal error: unexpectedly found nil while unwrapping an Optional value
///       where: member "clickUrl", answer to "http://ads.example/?container=home"
///
/// It copies nothing: the texts must outlive it.
class FatalContext {
 public:
    /// `name` may be any text: control characters are printed as "?", and at most 400 bytes of it.
    /// A context whose `what` is empty is not printed.
    explicit FatalContext(std::string_view what, std::string_view name = {}) noexcept;
    ~FatalContext();
    FatalContext(const FatalContext&) = delete;
    FatalContext& operator=(const FatalContext&) = delete;

    /// Prints the line to standard error, unless the thread is in no context.
    static void print() noexcept;

 private:
    const std::string_view what_;
    const std::string_view name_;
    const FatalContext* const outer_;
};

}  // namespace VexmoraSDK::platform
