// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/AdProtocol.h"
#include "VexmoraSDK/platform/foundation/Guarded.h"
#include "VexmoraSDK/platform/foundation/Object.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK {

/// An ad model that loads its own picture: what `Banner` and `Native` have in common. It is the
/// sender of "adReady" once the picture has arrived.
class VEXMORA_EXPORT ImageAd : public platform::Object, public AdProtocol, public AdImageProtocol {
 public:
    const std::shared_ptr<AdHandler>& delegate() const override { return delegate_; }
    std::shared_ptr<const platform::Image> image() const override { return image_.get(); }
    void setImage(std::shared_ptr<const platform::Image> image) override {
        image_.set(std::move(image));
    }
    const platform::Url& clickUrl() const override { return clickUrl_; }

 protected:
    explicit ImageAd(platform::Url clickUrl);
    /// Stops the process: a model's initialiser without arguments is not supported.
    [[noreturn]] static platform::Url unavailable(std::string_view className);

    void storeClickUrl(platform::Url clickUrl) { clickUrl_ = std::move(clickUrl); }

 private:
    const std::shared_ptr<AdHandler> delegate_;
    platform::Guarded<const platform::Image> image_;
    platform::Url clickUrl_;
};

}  // namespace VexmoraSDK
