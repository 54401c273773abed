#pragma once

#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/types/VexmoraAdType.h"

namespace VexmoraSDK {

class AdHandler;
class InternalAdView;

/// What every ad model is.
class VEXMORA_EXPORT AdProtocol {
 public:
    virtual ~AdProtocol() = default;

    /// The model's own image loader; never absent.
    virtual const std::shared_ptr<AdHandler>& delegate() const = 0;
    virtual VexmoraAdType adType() const = 0;
    /// Draws the ad into the view, in front of what is there. Main thread.
    virtual void render(InternalAdView& view) = 0;
};

}  // namespace VexmoraSDK
