// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAdItem.h"

#include <QtCore/QPointer>
#include <utility>

#include "VexmoraSDK/presenting/NativeTexts.h"
#include "VexmoraSDK/quick/Accessibility.h"

namespace VexmoraSDK {
namespace {

bool isShownOnScreens(const VexmoraView& view) {
    return view.viewType() == VexmoraViewType::interstitial;
}

std::optional<platform::Color> colorFrom(const QColor& color) {
    if (!color.isValid()) return std::nullopt;
    return platform::Color{color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

}  // namespace

VexmoraAdItem::VexmoraAdItem(QQuickItem* parent) : ViewItem(parent), ad_(new VexmoraAd(this)) {
    ad_->setItem(this);
    connect(ad_, &VexmoraAd::placementChanged, this, &VexmoraAdItem::placementChanges);
    connect(ad_, &VexmoraAd::adChanged, this, [this] {
        if (hostView_) return;
        applyTextColors();
        place(ad_->slot().view());
    });
    handOnSignals();
    // Its parent may have brought it into a scene before it was an ad item.
    if (window()) updateAccessibility();
}

VexmoraAdItem::~VexmoraAdItem() {
    // While the base class is destroyed nothing may come of the ad any more.
    delete ad_;
}

void VexmoraAdItem::handOnSignals() {
    const auto handOn = [this](auto from, auto to) { connect(ad_, from, this, to); };
    handOn(&VexmoraAd::containerIdChanged, &VexmoraAdItem::containerIdChanged);
    handOn(&VexmoraAd::adSizeChanged, &VexmoraAdItem::adSizeChanged);
    handOn(&VexmoraAd::adTypeChanged, &VexmoraAdItem::adTypeChanged);
    handOn(&VexmoraAd::viewTypeChanged, &VexmoraAdItem::viewTypeChanged);
    handOn(&VexmoraAd::statusChanged, &VexmoraAdItem::statusChanged);
    handOn(&VexmoraAd::errorChanged, &VexmoraAdItem::errorChanged);
    handOn(&VexmoraAd::viewableChanged, &VexmoraAdItem::viewableChanged);
    handOn(&VexmoraAd::refreshIntervalChanged, &VexmoraAdItem::refreshIntervalChanged);
    handOn(&VexmoraAd::timeoutChanged, &VexmoraAdItem::timeoutChanged);
    handOn(&VexmoraAd::didReceiveAd, &VexmoraAdItem::didReceiveAd);
    handOn(&VexmoraAd::didHaveError, &VexmoraAdItem::didHaveError);
    handOn(&VexmoraAd::willShowScreen, &VexmoraAdItem::willShowScreen);
    handOn(&VexmoraAd::willDismissScreen, &VexmoraAdItem::willDismissScreen);
    handOn(&VexmoraAd::didDismissScreen, &VexmoraAdItem::didDismissScreen);
    handOn(&VexmoraAd::willLeaveApplication, &VexmoraAdItem::willLeaveApplication);
    handOn(&VexmoraAd::becameViewable, &VexmoraAdItem::becameViewable);
}

void VexmoraAdItem::classBegin() {
    ViewItem::classBegin();
    ad_->classBegin();
}

void VexmoraAdItem::componentComplete() {
    ViewItem::componentComplete();
    ad_->componentComplete();
}

// A view of the host's is taken away as an ad of the item's own is.
void VexmoraAdItem::placementChanges() {
    if (std::exchange(hostView_, nullptr)) place(nullptr);
    const auto [width, height] = ad_->placement_.reservedSize();
    setReservedSize({width, height});
}

void VexmoraAdItem::setView(std::shared_ptr<VexmoraView> view) {
    const QPointer guard(this);
    hostView_ = std::move(view);
    ad_->withdraw();
    if (guard) place(hostView_);
}

const std::shared_ptr<VexmoraView>& VexmoraAdItem::view() const {
    return hostView_ ? hostView_ : ad_->slot().view();
}

void VexmoraAdItem::place(std::shared_ptr<VexmoraView> view) {
    show(view && isShownOnScreens(*view) ? nullptr : std::move(view));
    updateAccessibility();
}

void VexmoraAdItem::setTextColor(const QColor& color) {
    if (std::exchange(textColor_, color) == color) return;
    applyTextColors();
    Q_EMIT textColorChanged();
}

void VexmoraAdItem::setSecondaryTextColor(const QColor& color) {
    if (std::exchange(secondaryTextColor_, color) == color) return;
    applyTextColors();
    Q_EMIT secondaryTextColorChanged();
}

void VexmoraAdItem::applyTextColors() {
    if (const auto& drawn = ad_->slot().view())
        setTextColors(*drawn, {colorFrom(textColor_), colorFrom(secondaryTextColor_)});
}

void VexmoraAdItem::updateAccessibility() {
    const auto word = translated("Advertisement");
    const auto name =
        view() ? QString::fromStdString(accessibleName(word.toStdString(), *view())) : word;
    if (auto* link = makeAccessible(this, QAccessible::Link, name, {this, SLOT(press())}))
        link->setProperty("focusable", activeFocusOnTab());
}

}  // namespace VexmoraSDK
