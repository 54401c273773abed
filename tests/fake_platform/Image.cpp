#include "VexmoraSDK/platform/images/Image.h"

#include <cstdio>
#include <string>

namespace VexmoraSDK::platform {

struct Image::Impl {
    Size size;
};

// The pictures of the tests are texts such as "fake-image 320x50".
std::shared_ptr<const Image> Image::fromData(const Data& data) {
    Size size;
    if (std::sscanf(std::string(textOf(data)).c_str(), "fake-image %lfx%lf", &size.width,
                    &size.height) != 2) {
        return nullptr;
    }
    return std::make_shared<const Image>(std::make_unique<const Impl>(Impl{size}));
}

void Image::prepareDecoding() {}

Image::Image(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}

Image::~Image() = default;

Size Image::size() const {
    return impl_->size;
}

}  // namespace VexmoraSDK::platform
