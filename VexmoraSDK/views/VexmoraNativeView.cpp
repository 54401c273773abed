// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraNativeView.h"

#include <algorithm>
#include <limits>

#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "VexmoraSDK/views/AdViewHandler.h"

namespace VexmoraSDK {

using platform::ImageView;
using platform::Size;
using platform::TextLayout;
using platform::TextView;

const std::vector<VexmoraAdType>& VexmoraNativeView::allowedAdTypes() {
    static const platform::NoDestructor<std::vector<VexmoraAdType>> types(
        std::vector{VexmoraAdType::native});
    return *types;
}

VexmoraNativeView::VexmoraNativeView(platform::Rect frame)
    : InternalAdView(frame, VexmoraViewType::native, allowedAdTypes(), allowedAdTypes()),
      lastTextViewYPos_(Utils::nativeStartY) {}

VexmoraNativeView::VexmoraNativeView(const platform::Coder& coder)
    : InternalAdView(coder, VexmoraViewType::native, allowedAdTypes(), allowedAdTypes()),
      lastTextViewYPos_(Utils::nativeStartY) {}

std::shared_ptr<Native> VexmoraNativeView::ad() const {
    return std::static_pointer_cast<Native>(InternalAdView::ad());
}

void VexmoraNativeView::containerSetCallback() {
    const auto self = shared<VexmoraNativeView>();
    AdFactory::fetchAndCreateAd(
        vexmoraDelegate()->getUrl(*this),
        [self](const std::shared_ptr<Native>& native) {
            self->receive(native);
            self->layOutAhead(native);
        },
        [self](const VexmoraError& error) { self->tell(&VexmoraDelegate::didHaveError, error); });
    TextLayout::prepare();
}

// The blocks run behind the one that starts the picture's transfer. They are two, so that a game,
// which runs few blocks a frame, divides the work.
void VexmoraNativeView::layOutAhead(const std::shared_ptr<Native>& native) {
    laidOutAhead_.clear();
    const auto layOut = [self = shared<VexmoraNativeView>()](const Utils::Font& font,
                                                             const std::string& text) {
        if (!TextLayout::prepare()) return;
        const Size size{Native::kTextWidth, std::numeric_limits<double>::max()};
        auto view = AdViewHandler::makeTextView({{}, size}, font, text);
        view->sizeThatFits(size);
        self->laidOutAhead_.push_back(std::move(view));
    };
    auto& queue = platform::unwrap(platform::MainQueue::main(), "application object");
    queue.async([=] { layOut(Utils::nativeTitleFont, native->title()); });
    queue.async([=] {
        layOut(Utils::nativeDescriptionFont, native->desc());
        layOut(Utils::nativeDisplayNameFont, native->displayName());
    });
}

void VexmoraNativeView::draw() {
    const auto drawn = ad();
    if (drawn && drawn->image()) return InternalAdView::draw();
    const auto code =
        drawn ? VexmoraErrorCodes::ImageRequestError : VexmoraErrorCodes::UnknownError;
    tell(&VexmoraDelegate::didHaveError, VexmoraError(code, std::nullopt));
}

VexmoraNativeView::Method VexmoraNativeView::method(std::string_view selector) const {
    if (selector == Utils::handleTapCallbackSelector) return call<&VexmoraNativeView::handleTap>;
    return InternalAdView::method(selector);
}

void VexmoraNativeView::didAddSubview(platform::View& subview) {
    auto* text = dynamic_cast<TextView*>(&subview);
    if (!text) return;

    const auto same = std::ranges::find_if(
        laidOutAhead_, [text](const auto& other) { return text->takeLayoutOf(*other); });
    if (same != laidOutAhead_.end()) laidOutAhead_.erase(same);

    const auto [origin, size] = text->frame();
    const Size fitted = text->sizeThatFits({size.width, std::numeric_limits<double>::max()});
    // The inset is removed after measuring, so the text keeps the height measured with it.
    text->setTextContainerInset({});
    text->setFrame({{origin.x, lastTextViewYPos_}, fitted});
    lastTextViewYPos_ += fitted.height + Utils::nativeYElementPadding;
}

Size VexmoraNativeView::sizeThatFits(Size) {
    Size texts;
    Size pictures;
    for (const auto& subview : subviews()) {
        Size* column = nullptr;
        if (dynamic_cast<const TextView*>(subview.get())) column = &texts;
        if (dynamic_cast<const ImageView*>(subview.get())) column = &pictures;
        if (!column) continue;
        const Size size = subview->frame().size;
        column->height += size.height;
        column->width = std::max(column->width, size.width);
    }
    return {texts.width + pictures.width, std::max(pictures.height, texts.height)};
}

}  // namespace VexmoraSDK
