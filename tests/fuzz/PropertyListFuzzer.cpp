// Property lists. What was read is written and read again without a change.
#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"
#include "tests/fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    using platform::Coder;
    namespace PropertyList = platform::PropertyList;
    const auto list = PropertyList::dictionary(dataOf(bytes, size));
    // What is no number equals nothing, itself included.
    if (!list || !(*list == *list)) return 0;
    const auto archive = Coder(*list).data();
    const auto restored = Coder::fromData(archive);
    check(restored.has_value(), "an archive that cannot be read");
    // Not byte by byte: libplist may write equal containers once or twice.
    check(PropertyList::dictionary(restored->data()) == PropertyList::dictionary(archive),
          "another archive");
    return 0;
}
