// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAdPicture.h"

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/quick/Accessibility.h"

namespace VexmoraSDK {

VexmoraAdPicture::VexmoraAdPicture(QQuickItem* parent) : ViewItem(parent) {
    if (window()) updateAccessibility();
}

void VexmoraAdPicture::setAd(VexmoraAd* ad) {
    if (ad == ad_) return;
    if (ad_) ad_->disconnect(this);
    ad_ = ad;
    if (ad) {
        connect(ad, &VexmoraAd::adChanged, this, &VexmoraAdPicture::showPicture);
        connect(ad, &QObject::destroyed, this, &VexmoraAdPicture::showPicture);
        if (!ad->item()) ad->setItem(this);
    }
    showPicture();
    Q_EMIT adChanged();
}

void VexmoraAdPicture::showPicture() {
    const bool hasPicture = ad_ && ad_->slot().ad() && ad_->slot().ad()->picture;
    show(hasPicture ? platform::ImageView::create(ad_->slot().ad()->picture) : nullptr);
}

void VexmoraAdPicture::updateAccessibility() {
    makeAccessible(this, QAccessible::Graphic, translated("Advertisement"));
}

}  // namespace VexmoraSDK
