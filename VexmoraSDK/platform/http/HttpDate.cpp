// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/HttpDate.h"

#include <iomanip>
#include <locale>
#include <sstream>
#include <string_view>

namespace VexmoraSDK::platform {

std::optional<std::chrono::sys_seconds> readHttpDate(const std::string& text) {
    using namespace std::chrono;
    constexpr std::string_view kLongest = "Wednesday, 11-Nov-26 12:00:00 GMT";
    if (text.empty() || text.size() > kLongest.size()) return std::nullopt;
    for (const char* form :
         {"%a, %d %b %Y %H:%M:%S GMT", "%A, %d-%b-%y %H:%M:%S GMT", "%a %b %e %H:%M:%S %Y"}) {
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        std::tm parts{};
        if (!(stream >> std::get_time(&parts, form)) || stream.peek() != EOF) continue;
        const year_month_day day = year(parts.tm_year + 1900) /
                                   month(static_cast<unsigned>(parts.tm_mon + 1)) / parts.tm_mday;
        if (!day.ok()) return std::nullopt;
        return sys_days(day) + hours(parts.tm_hour) + minutes(parts.tm_min) + seconds(parts.tm_sec);
    }
    return std::nullopt;
}

}  // namespace VexmoraSDK::platform
