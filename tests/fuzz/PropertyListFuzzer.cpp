// SPDX-License-Identifier: MIT
// Reads property lists, writes them and reads them again. Both results must be equal.
#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"
#include "tests/fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    using platform::Coder;
    namespace PropertyList = platform::PropertyList;
    const auto list = PropertyList::dictionary(dataOf(bytes, size));
    // NaN would not equal itself.
    if (!list || !(*list == *list)) return 0;
    const auto archive = Coder(*list).data();
    const auto restored = Coder::fromData(archive);
    check(restored.has_value(), "an archive that cannot be read");
    // The bytes may differ, because libplist may write equal containers once or twice.
    check(PropertyList::dictionary(restored->data()) == PropertyList::dictionary(archive),
          "another archive");
    return 0;
}
