// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/FatalContext.h"

namespace VexmoraSDK::platform {

// No exception leaves the library. The functions that hosts call, the blocks of the main queue, the
// outermost functions of threads, deleters and callbacks of C libraries are `noexcept`, and lack of
// memory ends the process there with `std::terminate`. Only code that can go on without the memory
// catches `std::bad_alloc`.
//
// The stops themselves are not `noexcept`, because the fuzzers link stops that throw.

/// Prints "fatal error: `message`" to standard error, on a second line where that happens if a
/// `FatalContext` says so, and aborts. Any thread.
[[noreturn]] VEXMORA_EXPORT void fatalError(std::string_view message);

/// The stop of `unwrap`: a value that must be present is not.
[[noreturn]] VEXMORA_EXPORT void fatalNil();

/// The stop of a forced conversion of an object to a class that it is not of.
[[noreturn]] VEXMORA_EXPORT void fatalConversion(std::string_view from, std::string_view to);

/// The stop of an initialiser that a class does not support. `location` names the source as
/// "file: line: column: ", or is empty.
[[noreturn]] VEXMORA_EXPORT void unimplementedInitializer(std::string_view initializer,
                                                          std::string_view className,
                                                          std::string_view location = {});

/// What an optional or a pointer holds; a fatal stop when it holds nothing, whose report says with
/// `what` and `name` what that is.
template <class Optional>
decltype(auto) unwrap(Optional&& value, std::string_view what = {}, std::string_view name = {}) {
    if (!value) {
        const FatalContext context(what, name);
        fatalNil();
    }
    return *std::forward<Optional>(value);
}

/// `object` as a `To`; an object of another class or none is a fatal stop.
template <class To, class From>
std::shared_ptr<To> forcedConversion(const std::shared_ptr<From>& object) {
    if (!object) fatalNil();
    if (auto converted = std::dynamic_pointer_cast<To>(object)) return converted;
    fatalConversion(object->className(), To::kClassName);
}

}  // namespace VexmoraSDK::platform
