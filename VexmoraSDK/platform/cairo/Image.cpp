#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

std::shared_ptr<const Image> Image::fromData(const Data&) {
    return nullptr;
}

void Image::prepareDecoding() {}

}  // namespace VexmoraSDK::platform
