// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Guarded.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

class AdProtocol;
class AdViewHandler;
class ImageAd;

/// What all ad views have in common: setting the container identifier starts a request, the view
/// keeps its ad, and draws it when the ad's picture has arrived.
class VEXMORA_EXPORT InternalAdView : public VexmoraView {
 public:
    std::string fatalDetail() const override {
        return "container \"" + std::string(containerName()) + '"';
    }

    const std::vector<std::intptr_t>& adTypes() const override { return adTypes_; }
    void setAdTypes(std::vector<std::intptr_t> adTypes) noexcept override {
        adTypes_ = std::move(adTypes);
    }
    VexmoraViewType viewType() const override { return viewType_; }
    const std::optional<std::string>& containerId() const override { return containerId_; }
    void setContainerId(std::optional<std::string> containerId) noexcept override;
    std::shared_ptr<VexmoraDelegate> delegate() const override { return delegate_.get(); }
    void setDelegate(std::shared_ptr<VexmoraDelegate> delegate) noexcept override {
        delegate_.set(std::move(delegate));
    }

    /// The ad; absent until a request has brought one.
    const std::shared_ptr<AdProtocol>& ad() const { return ad_; }
    /// The ad types that this kind of view can show.
    const std::vector<VexmoraAdType>& allowedAdTypes() const { return allowedAdTypes_; }
    /// The view's helper, not the host's delegate; never absent.
    const std::shared_ptr<AdViewHandler>& vexmoraDelegate() const { return vexmoraDelegate_; }

    /// Starts a request with the current container identifier and ad types.
    virtual void containerSetCallback() = 0;
    /// Called when the ad's picture has arrived; draws on the main queue. Any thread.
    void adReadyCallback();

    /// Calls an operation of the host's delegate, if there is one that implements it, with this
    /// view and `arguments`. The delegate is held during the call, so that the host may replace it.
    template <class Operation, class... Arguments>
    void tell(Operation VexmoraDelegate::*operation, const Arguments&... arguments) {
        auto delegate = this->delegate();
        if (delegate && delegate.get()->*operation) {
            (delegate.get()->*operation)(*this, arguments...);
        }
        platform::MainQueue::release(std::move(delegate));
    }

 protected:
    /// A view with a frame, or as the coder of an interface file describes it. `allowedAdTypes`
    /// outlives the view; `adTypes` are those that the view requests at first.
    template <class FrameOrCoder>
    InternalAdView(const FrameOrCoder& description, VexmoraViewType viewType,
                   const std::vector<VexmoraAdType>& allowedAdTypes,
                   const std::vector<VexmoraAdType>& adTypes)
        : VexmoraView(description),
          viewType_(viewType),
          allowedAdTypes_(allowedAdTypes),
          adTypes_(rawValues(adTypes)) {}

    /// Keeps the ad of a request, and listens for its picture and for taps.
    void receive(const std::shared_ptr<AdProtocol>& ad);
    void store(std::shared_ptr<AdProtocol> ad) { ad_ = std::move(ad); }

    /// Draws the ad into the view and tells the delegate; no ad is a fatal stop. Main thread.
    virtual void draw();

    /// Draws `ad` into the view; no ad, or one without its picture, is a fatal stop.
    void render(const std::shared_ptr<AdProtocol>& ad);

    /// The container identifier, empty if it is absent, for fatal reports.
    std::string_view containerName() const {
        return containerId_ ? std::string_view(*containerId_) : std::string_view("");
    }

    /// Tells the host that `ad` was tapped and opens its address; no ad is a fatal stop.
    void open(const std::shared_ptr<ImageAd>& ad);

    Method method(std::string_view selector) const override;

 private:
    static std::shared_ptr<AdViewHandler> makeHandler();

    const VexmoraViewType viewType_;
    const std::vector<VexmoraAdType>& allowedAdTypes_;
    std::vector<std::intptr_t> adTypes_;
    platform::Guarded<VexmoraDelegate> delegate_;
    std::shared_ptr<AdProtocol> ad_;
    const std::shared_ptr<AdViewHandler> vexmoraDelegate_ = makeHandler();
    std::optional<std::string> containerId_;
};

}  // namespace VexmoraSDK
