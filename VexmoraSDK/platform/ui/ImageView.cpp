// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/ImageView.h"

#include <algorithm>

namespace VexmoraSDK::platform {

ImageView::ImageView(std::shared_ptr<const Image> image)
    : View({{}, image ? image->size() : Size()}), image_(std::move(image)) {}

void ImageView::setContentMode(ContentMode mode) {
    contentMode_ = mode;
    setNeedsDisplay();
}

Rect ImageView::imageRect() const {
    const Size view = frame().size;
    if (!image_ || contentMode_ == ContentMode::scaleToFill) return {{}, view};
    Size size = image_->size();
    if (contentMode_ == ContentMode::scaleAspectFit) {
        const double scale = std::min(view.width / size.width, view.height / size.height);
        size = {size.width * scale, size.height * scale};
    }
    return {{(view.width - size.width) / 2, (view.height - size.height) / 2}, size};
}

}  // namespace VexmoraSDK::platform
