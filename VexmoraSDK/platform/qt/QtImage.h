// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QImage>
#include <memory>

#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

/// `image` as Qt paints it: it shares the pixels, without a copy, and keeps them alive. Any thread.
VEXMORA_EXPORT QImage qtImage(std::shared_ptr<const Image> image);

}  // namespace VexmoraSDK::platform
