#pragma once

#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK {

/// What an ad model with a picture is.
class VEXMORA_EXPORT AdImageProtocol {
 public:
    virtual ~AdImageProtocol() = default;

    /// Absent until the picture is loaded, and for good when its bytes are no picture. Set on a
    /// delivery thread, read on any.
    virtual std::shared_ptr<const platform::Image> image() const = 0;
    virtual void setImage(std::shared_ptr<const platform::Image> image) = 0;
    /// Where a tap on the ad leads.
    virtual const platform::Url& clickUrl() const = 0;
};

}  // namespace VexmoraSDK
