#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace VexmoraSDK {

/// A JSON value that knows its place in the text, for whoever has to tell people where they
/// mistook themselves.
struct LinedJson {
    enum class Kind { object, array, string, integer, other };

    Kind kind = Kind::other;
    int line = 1;                     ///< On which it begins, from 1.
    std::string name{};               ///< Of a member of an object.
    std::string text{};               ///< What a string says, or any other scalar as it is written.
    std::int64_t integer = 0;         ///< Whole numbers that fit.
    std::vector<LinedJson> values{};  ///< Members or elements, in order, repeated names included.

    /// The first member of that name, or nullptr.
    const LinedJson* member(std::string_view wanted) const;
    /// In a few words, for a message: `"tea"`, `77`, `an object`.
    std::string description() const;

    struct Error : std::runtime_error {
        Error(int lineOfError, const std::string& what)
            : std::runtime_error(what), line(lineOfError) {}
        int line;
    };
    /// Throws Error where the text is not JSON.
    static LinedJson parse(std::string_view text);
};

}  // namespace VexmoraSDK
