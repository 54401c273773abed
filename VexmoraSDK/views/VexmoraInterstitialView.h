#pragma once

#include "VexmoraSDK/views/AdView.h"

namespace VexmoraSDK {

/// Shows a full-screen ad on a screen that the host presents.
class VexmoraInterstitialView : public AdView<AdProtocol> {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraInterstitialView";
    /// `leaderboard`, `mediumRectangle`. Until it is told otherwise a view asks for the types of a
    /// banner view.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraInterstitialView> create(platform::Rect frame = {});
    explicit VexmoraInterstitialView(platform::Rect frame);

    std::string_view className() const override { return kClassName; }

    void containerSetCallback() override;

 protected:
    void draw() override;

 private:
    void handleResponse(const platform::Data& body);
};

}  // namespace VexmoraSDK
