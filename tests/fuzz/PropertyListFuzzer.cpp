// Property lists. What was read is written and read again without a change.
#include "VexmoraSDK/platform/Coder.h"
#include "VexmoraSDK/platform/PropertyList.h"
#include "tests/fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    using platform::Coder;
    const auto list = platform::PropertyList::dictionary(dataOf(bytes, size));
    if (!list) return 0;
    const auto archive = Coder(*list).data();
    const auto restored = Coder::fromData(archive);
    check(restored.has_value(), "an archive that cannot be read");
    check(restored->data() == archive, "another archive");
    return 0;
}
