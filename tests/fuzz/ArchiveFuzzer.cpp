// Errors, archived and restored with all that they hold.
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

/// Makes values out of fuzz bytes.
class Maker {
 public:
    Maker(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes, size) {}

    VexmoraError error() {
        platform::Coder coder;
        coder.encode("NSDomain", text());
        coder.encode("NSCode", number<std::int64_t>());
        if (bytes_.ConsumeBool()) coder.encode("NSUserInfo", dictionary());
        return VexmoraError(coder);
    }

 private:
    std::string text() { return bytes_.ConsumeRandomLengthString(64); }

    template <class T>
    T number() {
        return bytes_.ConsumeIntegral<T>();
    }

    Dictionary dictionary() {
        Dictionary dictionary;
        while (bytes_.ConsumeBool())
            dictionary.insert_or_assign(text(), value());
        return dictionary;
    }

    Array array() {
        Array array;
        while (bytes_.ConsumeBool())
            array.push_back(value());
        return array;
    }

    Value value() {
        switch (bytes_.ConsumeIntegralInRange(0, 8)) {
            case 0: return bytes_.ConsumeBool();
            case 1: return number<std::int64_t>();
            case 2: return finite(std::bit_cast<double>(number<std::uint64_t>()));
            case 3: return text();
            case 4: return platform::dataOf(text());
            case 5: return Date(Date::duration(number<Date::rep>()));
            case 6: return array();
            case 7: return dictionary();
            default: return {};
        }
    }

    /// What is no number equals nothing, itself included.
    static double finite(double number) {
        return number == number ? number : std::numeric_limits<double>::infinity();
    }

    FuzzedDataProvider bytes_;
};

}  // namespace
}  // namespace VexmoraSDK

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    const auto error = Maker(bytes, size).error();
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
