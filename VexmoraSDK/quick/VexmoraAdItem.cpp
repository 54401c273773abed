// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAdItem.h"

#include <QtCore/QPointer>
#include <algorithm>
#include <iterator>
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
    connect(ad_, &VexmoraAd::didHaveError, this, &VexmoraAdItem::didHaveError);
    connect(ad_, &VexmoraAd::willLeaveApplication, this, &VexmoraAdItem::willLeaveApplication);
    connect(this, &ViewItem::fillModeChanged, ad_, [this] { ad_->setFillMode(fillMode()); });
    ad_->shownBy_ = this;
    // The parent may have brought the item into a scene during the base constructor.
    if (window()) VexmoraAdItem::updateAccessibility();
}

VexmoraAdItem::~VexmoraAdItem() {
    // The ad must emit nothing while the base class is destroyed.
    delete ad_;
}

void VexmoraAdItem::handOn(void (VexmoraAd::*signal)()) {
    struct Same {
        void (VexmoraAd::*ofAd)();
        void (VexmoraAdItem::*ofItem)();
    };
    static constexpr Same kSignals[] = {
        {&VexmoraAd::containerIdChanged, &VexmoraAdItem::containerIdChanged},
        {&VexmoraAd::adSizeChanged, &VexmoraAdItem::adSizeChanged},
        {&VexmoraAd::adTypeChanged, &VexmoraAdItem::adTypeChanged},
        {&VexmoraAd::viewTypeChanged, &VexmoraAdItem::viewTypeChanged},
        {&VexmoraAd::statusChanged, &VexmoraAdItem::statusChanged},
        {&VexmoraAd::errorChanged, &VexmoraAdItem::errorChanged},
        {&VexmoraAd::viewableChanged, &VexmoraAdItem::viewableChanged},
        {&VexmoraAd::refreshIntervalChanged, &VexmoraAdItem::refreshIntervalChanged},
        {&VexmoraAd::timeoutChanged, &VexmoraAdItem::timeoutChanged},
        {&VexmoraAd::didReceiveAd, &VexmoraAdItem::didReceiveAd},
        {&VexmoraAd::willShowScreen, &VexmoraAdItem::willShowScreen},
        {&VexmoraAd::willDismissScreen, &VexmoraAdItem::willDismissScreen},
        {&VexmoraAd::didDismissScreen, &VexmoraAdItem::didDismissScreen},
        {&VexmoraAd::becameViewable, &VexmoraAdItem::becameViewable},
    };
    const auto* same = std::ranges::find(kSignals, signal, &Same::ofAd);
    if (same != std::end(kSignals)) Q_EMIT(this->*same->ofItem)();
}

void VexmoraAdItem::classBegin() {
    ViewItem::classBegin();
    ad_->classBegin();
}

void VexmoraAdItem::componentComplete() {
    ViewItem::componentComplete();
    ad_->componentComplete();
}

// A view set by the host is removed like an ad of the item's own.
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
    auto* const link =
        accessible_->update(this, QAccessible::Link, name, !isShowing(), {this, "press()"});
    if (link) link->setProperty("focusable", activeFocusOnTab());
}

}  // namespace VexmoraSDK
