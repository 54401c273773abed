#include "VexmoraSDK/platform/images/Image.h"

#include <cstdio>
#include <string>

namespace VexmoraSDK::platform {

// The pictures of the tests are texts such as "fake-image 320x50".
std::shared_ptr<const Image> Image::fromData(const Data& data) {
    int width = 0;
    int height = 0;
    if (std::sscanf(std::string(textOf(data)).c_str(), "fake-image %dx%d", &width, &height) != 2) {
        return nullptr;
    }
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return std::make_shared<const Image>(width, height, std::make_unique<std::uint32_t[]>(pixels),
                                         false);
}

void Image::prepareDecoding() {}

}  // namespace VexmoraSDK::platform
