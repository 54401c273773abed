#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/views/FetchedAdView.h"

namespace VexmoraSDK {

/// Shows a native ad: its picture at the left and three texts stacked to its right. Takes the size
/// of what it shows.
class VEXMORA_EXPORT VexmoraNativeView
    : public FetchedAdView<Native, &AdFactory::fetchAndCreateAd> {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraNativeView";
    /// `native`; what `adTypes` is at first.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraNativeView> create(platform::Rect frame = {});
    explicit VexmoraNativeView(platform::Rect frame);
    /// As an interface file describes it.
    explicit VexmoraNativeView(const platform::Coder& coder);

    std::string_view className() const override { return kClassName; }

    /// The size of the content, whatever is proposed: texts one above the other beside pictures.
    /// How far the texts overlap, and the gap beside the picture, do not count.
    platform::Size sizeThatFits(platform::Size proposed) override;

 protected:
    /// Fits an added text to its width and stacks it below the last.
    void didAddSubview(platform::View& subview) override;
    void draw() override;

 private:
    double lastTextViewYPos_ = Utils::nativeStartY;
};

}  // namespace VexmoraSDK
