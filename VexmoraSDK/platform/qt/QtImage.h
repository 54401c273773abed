// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QImage>
#include <memory>

#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

/// Returns a QImage that shares the pixels of `image` and keeps them alive. Any thread.
VEXMORA_EXPORT QImage qtImage(std::shared_ptr<const Image> image);

}  // namespace VexmoraSDK::platform
