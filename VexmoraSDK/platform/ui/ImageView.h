// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/images/Image.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK::platform {

/// How a picture fills its view.
enum class ContentMode : int {
    scaleToFill = 0,     ///< stretched to the view's size
    scaleAspectFit = 1,  ///< as large as fits with its proportions kept, centred
    center = 4,          ///< unscaled, centred, not clipped
};

/// Shows a picture. Takes no touches.
class VEXMORA_EXPORT ImageView : public View {
 public:
    static constexpr std::string_view kClassName = "ImageView";

    /// A view of the picture's natural size at (0, 0).
    static std::shared_ptr<ImageView> create(std::shared_ptr<const Image> image) {
        return makeSharedOnMain<ImageView>(std::move(image));
    }
    explicit ImageView(std::shared_ptr<const Image> image);

    std::string_view className() const override { return kClassName; }

    /// May be absent.
    const std::shared_ptr<const Image>& image() const { return image_; }

    ContentMode contentMode() const { return contentMode_; }
    void setContentMode(ContentMode mode);

    /// The rectangle of the picture, in the view's own coordinates.
    Rect imageRect() const;

 protected:
    bool takesTouches() const override { return false; }

 private:
    std::shared_ptr<const Image> image_;
    ContentMode contentMode_ = ContentMode::scaleToFill;
};

}  // namespace VexmoraSDK::platform
