// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/NativeTexts.h"

#include "VexmoraSDK/platform/ui/TextView.h"
#include "VexmoraSDK/utils/Utils.h"

namespace VexmoraSDK {
namespace {

void forEachText(const VexmoraView& view, const auto& visit) {
    for (const auto& subview : view.subviews())
        if (auto* text = dynamic_cast<platform::TextView*>(subview.get())) visit(*text);
}

}  // namespace

void setTextColors(const VexmoraView& view, const NativeTextColors& colors) {
    const platform::Color inOrder[] = {
        colors.text.value_or(Utils::nativeTitleFont.color),
        colors.text.value_or(Utils::nativeDescriptionFont.color),
        colors.secondary.value_or(Utils::nativeDisplayNameFont.color),
    };
    std::size_t index = 0;
    forEachText(view, [&](platform::TextView& text) {
        text.setTextColor(inOrder[index++ % std::size(inOrder)]);
    });
}

std::string accessibleName(std::string_view advertisement, const VexmoraView& view) {
    std::string name(advertisement);
    forEachText(view, [&](const platform::TextView& text) {
        const auto words = text.text().value_or("");
        if (!words.empty()) name += ", " + words;
    });
    return name;
}

}  // namespace VexmoraSDK
