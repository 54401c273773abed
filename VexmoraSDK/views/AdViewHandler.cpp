// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/AdViewHandler.h"

#include <array>

#include "VexmoraSDK/config/Config.h"
#include "VexmoraSDK/platform/Application.h"
#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"
#include "VexmoraSDK/platform/ui/TapGestureRecognizer.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

using platform::unwrap;

namespace {

/// Fills in the two placeholders of `format`, see `AdViewHandler::requestUrlFormat`. Anything else,
/// further placeholders too, stays as it is.
std::string filled(std::string_view format, const std::string& first, const std::string& second) {
    const std::array<std::string_view, 2> arguments = {first, second};
    std::size_t next = 0;
    std::string text;
    for (auto plain = format.find('%'); plain != format.npos; plain = format.find('%')) {
        text += format.substr(0, plain);
        format.remove_prefix(plain);
        std::size_t length = 1;
        std::string_view value = "%";
        if (format.starts_with("%%")) {
            length = 2;
        } else if (format.starts_with("%@") && next < arguments.size()) {
            length = 2;
            value = arguments[next++];
        } else if (format.starts_with("%1$@") || format.starts_with("%2$@")) {
            length = 4;
            value = arguments[format[1] == '1' ? 0 : 1];
        }
        text += value;
        format.remove_prefix(length);
    }
    return text.append(format);
}

std::string joined(const std::vector<std::intptr_t>& numbers) {
    std::string text;
    for (const auto number : numbers) {
        if (!text.empty()) text += ',';
        text += std::to_string(number);
    }
    return text;
}

std::string formatFromSettings() {
    const auto folder = platform::Bundle::library().folder().string();
    const platform::FatalContext context("resource folder", folder);
    return unwrap(Config::instance().settingForKey<std::string>("requestUrlFormat"), "setting",
                  "requestUrlFormat");
}

}  // namespace

AdViewHandler::AdViewHandler() : requestUrlFormat_(formatFromSettings()) {}

platform::Url AdViewHandler::getUrl(const VexmoraView& view) const {
    const auto adTypes = joined(view.adTypes());
    const auto text =
        filled(requestUrlFormat_, unwrap(view.containerId(), "container identifier"), adTypes);
    return unwrap(platform::Url::fromString(text), "request", text);
}

std::shared_ptr<platform::ImageView> AdViewHandler::addImageView(
    VexmoraView& view, std::shared_ptr<const platform::Image> image) const {
    auto imageView = platform::ImageView::create(std::move(image));
    view.addSubview(imageView);
    return imageView;
}

std::shared_ptr<platform::TextView> AdViewHandler::addTextView(
    VexmoraView& view, platform::Rect frame, const Utils::Font& font,
    std::optional<std::string> text) const {
    auto textView = makeTextView(frame, font, std::move(text));
    view.addSubview(textView);
    return textView;
}

std::shared_ptr<platform::TextView> AdViewHandler::makeTextView(platform::Rect frame,
                                                                const Utils::Font& font,
                                                                std::optional<std::string> text) {
    auto textView = platform::TextView::create(frame);
    textView->setFont(platform::Font::named(font.family, font.size));
    textView->setText(std::move(text));
    textView->setEditable(false);
    return textView;
}

void AdViewHandler::addObserver(VexmoraView& view, const std::shared_ptr<AdProtocol>& ad) const {
    platform::NotificationCenter::defaultCenter().addObserver(
        view.shared_from_this(), std::string(Utils::adReadyCallbackSelector),
        std::string(Utils::adReadyNotificationName),
        std::dynamic_pointer_cast<platform::Object>(ad));
}

void AdViewHandler::addTapHandler(InternalAdView& view) const {
    auto recognizer = std::make_shared<platform::TapGestureRecognizer>(
        view.weak_from_this(), std::string(Utils::handleTapCallbackSelector));
    recognizer->setDelegate(view.weak_from_this());
    view.addGestureRecognizer(std::move(recognizer));
}

void AdViewHandler::handleTap(InternalAdView& view, const platform::Url& url) const {
    view.tell(&VexmoraDelegate::willLeaveApplication);
    platform::Application::openUrl(url);
}

}  // namespace VexmoraSDK
