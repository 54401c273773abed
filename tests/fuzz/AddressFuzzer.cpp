// Texts that may be addresses.
#include <algorithm>
#include <cctype>
#include <string_view>

#include "VexmoraSDK/platform/foundation/Url.h"
#include "tests/fuzz/Fuzzing.h"

namespace {

bool mayStandInAnAddress(char c) {
    constexpr std::string_view kOthers = "-._~:/?#[]@!$&'()*+,;=%";
    return std::isalnum(static_cast<unsigned char>(c)) || kOthers.find(c) != kOthers.npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using VexmoraSDK::check;
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto url = VexmoraSDK::platform::Url::fromString(text);
    if (!url) return 0;
    check(url->text() == text, "the text was changed");
    check(std::ranges::all_of(text, mayStandInAnAddress), "no address");
    const auto scheme = url->scheme();
    check(scheme.empty() || text[scheme.size()] == ':', "another scheme");
    check(std::ranges::none_of(scheme, [](char c) { return c >= 'A' && c <= 'Z'; }),
          "a scheme in upper case");
    check(text.find(url->host()) != text.npos, "another host");
    return 0;
}
