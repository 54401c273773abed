// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/Native.h"

#include "VexmoraSDK/ads/AdHandler.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/views/AdViewHandler.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

std::shared_ptr<Native> Native::create(platform::Url clickUrl, std::string title,
                                       std::string description, std::string displayName,
                                       const platform::Url& imageUrl) {
    std::shared_ptr<Native> native(new Native(std::move(clickUrl), std::move(title),
                                              std::move(description), std::move(displayName)));
    native->delegate()->setImage(native, imageUrl);
    return native;
}

Native::Native(platform::Url clickUrl, std::string title, std::string description,
               std::string displayName)
    : ImageAd(std::move(clickUrl)),
      title_(std::move(title)),
      desc_(std::move(description)),
      displayName_(std::move(displayName)) {}

Native::Native() : ImageAd(unavailable(kClassName)) {}

void Native::render(InternalAdView& view) {
    const auto& handler = *view.vexmoraDelegate();
    auto loaded = image();
    platform::unwrap(loaded, "picture");
    const auto picture = handler.addImageView(view, std::move(loaded));
    picture->setFrame({{0, 0}, {132, 99}});
    picture->setContentMode(platform::ContentMode::scaleAspectFit);

    // These frames are not final, because the view fits and stacks the texts as they are added.
    const auto& titleFont = Utils::nativeTitleFont;
    const auto title = handler.addTextView(view, {{135, 0}, {kTextWidth, 20}}, titleFont, title_);
    title->setTextColor(titleFont.color);

    const auto& descriptionFont = Utils::nativeDescriptionFont;
    const auto description = handler.addTextView(
        view, {{135, title->contentSize().height}, {kTextWidth, 80}}, descriptionFont, desc_);
    description->setTextColor(descriptionFont.color);

    const auto& displayNameFont = Utils::nativeDisplayNameFont;
    const double below = title->contentSize().height + description->contentSize().height;
    const auto displayName =
        handler.addTextView(view, {{135, below}, {kTextWidth, 20}}, displayNameFont, displayName_);
    displayName->setTextColor(displayNameFont.color);

    view.sizeToFit();
}

}  // namespace VexmoraSDK
