// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/types/VexmoraAdType.h"

namespace VexmoraSDK {

namespace platform {
class Image;
class Url;
}  // namespace platform

class AdHandler;
class InternalAdView;

/// The interface of every ad model.
class VEXMORA_EXPORT AdProtocol {
 public:
    virtual ~AdProtocol() = default;

    /// The model's own image loader; never absent.
    virtual const std::shared_ptr<AdHandler>& delegate() const = 0;
    virtual VexmoraAdType adType() const = 0;
    /// Draws the ad into the view, in front of its subviews. Main thread.
    virtual void render(InternalAdView& view) = 0;
};

/// The interface of an ad model with a picture.
class VEXMORA_EXPORT AdImageProtocol {
 public:
    virtual ~AdImageProtocol() = default;

    /// The picture; absent until it is loaded, and forever if its bytes are no picture. Set on a
    /// delivery thread, read on any.
    virtual std::shared_ptr<const platform::Image> image() const = 0;
    virtual void setImage(std::shared_ptr<const platform::Image> image) = 0;
    /// The URL that a tap on the ad opens.
    virtual const platform::Url& clickUrl() const = 0;
};

}  // namespace VexmoraSDK
