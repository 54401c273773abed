// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAdPicture.h"

#include <utility>

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/quick/Accessibility.h"

namespace VexmoraSDK {

VexmoraAdPicture::VexmoraAdPicture(QQuickItem* parent) : ViewItem(parent) {
    if (window()) VexmoraAdPicture::updateAccessibility();
}

void VexmoraAdPicture::setAd(VexmoraAd* ad) {
    if (ad == ad_) return;
    const QPointer former(std::exchange(ad_, ad).data());
    if (former) former->disconnect(this);
    if (ad) {
        connect(ad, &VexmoraAd::adChanged, this, &VexmoraAdPicture::showPicture);
        connect(ad, &QObject::destroyed, this, &VexmoraAdPicture::showPicture);
    }
    showPicture();
    // The host may destroy this or the ad when it hears of what follows.
    const QPointer guard(this);
    if (former && former->item() == this) former->setItem(nullptr);
    if (guard && ad_ && !ad_->item()) ad_->setItem(this);
    if (guard) Q_EMIT adChanged();
}

void VexmoraAdPicture::showPicture() {
    const bool hasPicture = ad_ && ad_->slot().ad() && ad_->slot().ad()->picture;
    show(hasPicture ? platform::ImageView::create(ad_->slot().ad()->picture) : nullptr);
    updateAccessibility();
}

void VexmoraAdPicture::updateAccessibility() {
    accessible_->update(this, QAccessible::Graphic, translated("Advertisement"), !isShowing());
}

}  // namespace VexmoraSDK
