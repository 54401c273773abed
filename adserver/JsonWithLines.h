// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace VexmoraSDK {

/// A JSON value that knows its line in the text, so that an error message can name it.
struct JsonWithLines {
    enum class Kind { object, array, string, integer, other };

    Kind kind = Kind::other;
    int line = 1;              ///< The line on which it begins, from 1.
    std::string name{};        ///< The name of a member of an object.
    std::string text{};        ///< A string's characters; any other scalar as it is written.
    std::int64_t integer = 0;  ///< The value of a whole number of at most 64 bits.
    std::vector<JsonWithLines> values{};  ///< Members or elements in order; names may repeat.

    /// The first member of that name, or nullptr.
    const JsonWithLines* member(std::string_view wanted) const;
    /// The value in a few words, for a message: `"tea"`, `77`, `an object`.
    std::string description() const;

    struct Error : std::runtime_error {
        Error(int lineOfError, const std::string& what)
            : std::runtime_error(what), line(lineOfError) {}
        int line;
    };
    /// Throws Error when the text is not JSON.
    static JsonWithLines parse(std::string_view text);
};

}  // namespace VexmoraSDK
