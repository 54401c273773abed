#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

// No exception leaves the library. Lack of memory is a fatal stop as well, which needs no code of
// its own: what hosts and toolkits call to have work done, the blocks of the main queue, callbacks
// of C libraries and deleters are `noexcept`, and above the top of a thread there is nothing to
// leave to. `std::bad_alloc` ends the process there in `std::terminate`, with the report of the
// C++ runtime and, since nothing is unwound, the stack of the place where memory was missing. It
// is thrown on behalf of C libraries that tell of their own lack of it too. A transfer alone
// survives it: what libcurl or the body of an answer lacks is an error of the transport.

/// Prints "fatal error: `message`" to standard error and aborts. Any thread.
[[noreturn]] VEXMORA_EXPORT void fatalError(std::string_view message) noexcept;

/// The stop of `unwrap`: a value that must be present is not.
[[noreturn]] VEXMORA_EXPORT void fatalNil() noexcept;

/// The stop of a forced conversion of an object to a class that it is not of.
[[noreturn]] VEXMORA_EXPORT void fatalConversion(std::string_view from,
                                                 std::string_view to) noexcept;

/// The stop of an initialiser that a class does not support. `location` names the source as
/// "file: line: column: ", or is empty.
[[noreturn]] VEXMORA_EXPORT void unimplementedInitializer(std::string_view initializer,
                                                          std::string_view className,
                                                          std::string_view location = {}) noexcept;

/// What an optional or a pointer holds; a fatal stop when it holds nothing.
template <class Optional>
decltype(auto) unwrap(Optional&& value) {
    if (!value) fatalNil();
    return *std::forward<Optional>(value);
}

/// `object` as a `To`; a fatal stop when it is of another class. An absent object is a fatal stop
/// too.
template <class To, class From>
std::shared_ptr<To> forcedConversion(const std::shared_ptr<From>& object) {
    if (!object) fatalNil();
    if (auto converted = std::dynamic_pointer_cast<To>(object)) return converted;
    fatalConversion(object->className(), To::kClassName);
}

}  // namespace VexmoraSDK::platform
