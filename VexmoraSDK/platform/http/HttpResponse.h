// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::platform {

/// The header fields of a response.
class HttpHeaders {
 public:
    /// Adds a line as it was received; one that begins with a blank continues the line before.
    void add(std::string_view line);
    void clear() { lines_.clear(); }

    /// The values of the lines of that name, whatever its case, without blanks around them.
    std::vector<std::string_view> values(std::string_view name) const;
    /// These values with ", " between them: one list, as RFC 9110 combines fields.
    std::string combined(std::string_view name) const;

 private:
    std::string lines_;  // each ends with a line feed
};

/// The final response to a GET.
struct HttpResponse {
    long status = 0;
    HttpHeaders headers;
    /// The body as it was received: encoded if the headers say so.
    Data body;
    /// Whether the response itself tells where its body ends. Otherwise the connection's end does,
    /// and a body cut short looks whole.
    bool isSelfDelimited = false;
    /// Whether a redirect led to this response.
    bool isRedirected = false;
};

/// The lower case of an ASCII letter, whatever the locale; any other character as it is.
char lowerCase(char c);

/// Whether the texts are the same but for the case of ASCII letters.
bool equalIgnoringCase(std::string_view a, std::string_view b);

/// The elements of a comma-separated list, without blanks around them and without empty ones. A
/// comma in a quoted string separates nothing.
std::vector<std::string_view> listElements(std::string_view list);

}  // namespace VexmoraSDK::platform
