#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

/// An ad view that holds ads of one class of model.
template <class AdType>
class VEXMORA_EXPORT AdView : public InternalAdView {
 public:
    /// Absent until a request has brought one.
    const std::shared_ptr<AdType>& ad() const { return ad_; }
    void setAd(std::shared_ptr<AdType> ad) { ad_ = std::move(ad); }

 protected:
    using InternalAdView::InternalAdView;

    /// Takes the ad that a request has brought.
    void receive(std::shared_ptr<AdType> ad) {
        ad_ = std::move(ad);
        vexmoraDelegate()->addObserver(*this, ad_);
        vexmoraDelegate()->addTapHandler(*this);
    }

 private:
    std::shared_ptr<AdType> ad_;
};

}  // namespace VexmoraSDK
