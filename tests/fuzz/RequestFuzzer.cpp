// The address of the ad request: its template, the container identifier and the ad types, one a
// line.
#include <sstream>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/views/InternalAdView.h"
#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK {
namespace {

/// A view that asks for nothing by itself.
class Slot : public InternalAdView {
 public:
    Slot() : InternalAdView(platform::Rect(), VexmoraViewType::banner, kNone, {}) {}

    void containerSetCallback() override {}

 protected:
    void draw() override {}

 private:
    static inline const std::vector<VexmoraAdType> kNone;
};

void request(const std::string& format, const std::string& container, const std::string& types) {
    const auto view = std::make_shared<Slot>();
    view->vexmoraDelegate()->setRequestUrlFormat(format);
    view->setAdTypes({types.begin(), types.end()});
    view->setContainerId(container);

    const auto address = view->vexmoraDelegate()->getUrl(*view);
    check(address == view->vexmoraDelegate()->getUrl(*view), "another address the next time");
    check(format.find('%') != format.npos || address.text() == format, "the template was changed");
}

}  // namespace
}  // namespace VexmoraSDK

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    VexmoraSDK::platform::Bundle::setLibraryFolder(VEXMORA_RESOURCES);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::istringstream lines(std::string(reinterpret_cast<const char*>(bytes), size));
    std::string format;
    std::string container;
    std::string types;
    std::getline(lines, format);
    std::getline(lines, container);
    std::getline(lines, types);
    try {
        VexmoraSDK::request(format, container, types);
    } catch (const VexmoraSDK::FatalStop&) {
    }
    return 0;
}
