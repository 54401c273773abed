// SPDX-License-Identifier: MIT
// Archives errors and restores them, with all kinds of user information.
#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <limits>

#include "VexmoraSDK/errors/VexmoraError.h"
#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK {
namespace {

using platform::Array;
using platform::Date;
using platform::Dictionary;
using platform::Value;

std::string text(FuzzedDataProvider& bytes) {
    return bytes.ConsumeRandomLengthString(64);
}

/// NaN would not equal itself.
double finite(double number) {
    return number == number ? number : std::numeric_limits<double>::infinity();
}

Value value(FuzzedDataProvider& bytes);

Dictionary dictionary(FuzzedDataProvider& bytes) {
    Dictionary dictionary;
    while (bytes.ConsumeBool())
        dictionary.insert_or_assign(text(bytes), value(bytes));
    return dictionary;
}

Value value(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 8)) {
        case 0: return bytes.ConsumeBool();
        case 1: return bytes.ConsumeIntegral<std::int64_t>();
        case 2: return finite(std::bit_cast<double>(bytes.ConsumeIntegral<std::uint64_t>()));
        case 3: return text(bytes);
        case 4: return platform::dataOf(text(bytes));
        case 5: return Date(Date::duration(bytes.ConsumeIntegral<Date::rep>()));
        case 6: {
            Array array;
            while (bytes.ConsumeBool())
                array.push_back(value(bytes));
            return array;
        }
        case 7: return dictionary(bytes);
        default: return {};
    }
}

}  // namespace
}  // namespace VexmoraSDK

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace VexmoraSDK;
    FuzzedDataProvider bytes(data, size);
    platform::Coder made;
    made.encode("NSDomain", text(bytes));
    made.encode("NSCode", bytes.ConsumeIntegral<std::int64_t>());
    if (bytes.ConsumeBool()) made.encode("NSUserInfo", dictionary(bytes));
    const VexmoraError error(made);
    platform::Coder coder;
    error.encode(coder);
    const auto archive = platform::Coder::fromData(coder.data());
    check(archive.has_value(), "an archive that cannot be read");
    const VexmoraError restored(*archive);
    check(restored.domain() == error.domain(), "another domain");
    check(restored.code() == error.code(), "another code");
    check(restored.userInfo() == error.userInfo(), "another user information");
    return 0;
}
