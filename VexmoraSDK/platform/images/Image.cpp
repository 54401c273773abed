#include "VexmoraSDK/platform/images/Image.h"

#include <utility>

namespace VexmoraSDK::platform {

Image::Image(int width, int height, Pixels pixels, bool isOpaque)
    : width_(width), height_(height), pixels_(std::move(pixels)), isOpaque_(isOpaque) {}

}  // namespace VexmoraSDK::platform
