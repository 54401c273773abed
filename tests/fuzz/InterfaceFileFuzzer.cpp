// SPDX-License-Identifier: MIT
// Loads interface files and uses the views that they make.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "VexmoraSDK/platform/ui/Nib.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK {
namespace {

template <class View>
std::shared_ptr<platform::View> fromCoder(const platform::Coder& coder) {
    return platform::makeSharedOnMain<View>(coder);
}

/// A bundle with one interface file.
class Folder {
 public:
    Folder() { std::filesystem::create_directories(path_ / "views"); }
    ~Folder() { std::filesystem::remove_all(path_); }

    platform::Nib nibOf(const std::uint8_t* bytes, std::size_t size) const {
        std::ofstream(path_ / "views" / "Fuzzed.nib", std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(size));
        return {"Fuzzed", platform::Bundle(path_)};
    }

 private:
    const std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("vexmora-interface-" + std::to_string(getpid()));
};

void touch(platform::View& view) {
    view.setSafeAreaInsets({20, 0, 10, 0});
    view.setFrame({{0, 0}, {320, 480}});
    view.sizeToFit();
    const auto hit = view.hitTest({280, 20});
    check(!hit || hit.get() == &view || hit->superview(), "a hit outside the tree");
}

}  // namespace
}  // namespace VexmoraSDK

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    VexmoraSDK::platform::Bundle::setLibraryFolder(VEXMORA_RESOURCES);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    static const Folder folder;
    try {
        const auto views = folder.nibOf(bytes, size)
                               .instantiate({
                                   {"VexmoraBannerView", fromCoder<VexmoraBannerView>},
                                   {"VexmoraNativeView", fromCoder<VexmoraNativeView>},
                                   {"VexmoraInterstitialView", fromCoder<VexmoraInterstitialView>},
                               });
        for (const auto& view : views)
            touch(*view);
    } catch (const FatalStop&) {
    }
    return 0;
}
