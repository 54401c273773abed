// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QPointer>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/quick/VexmoraAd.h"
#include "VexmoraSDK/quick/ViewItem.h"

namespace VexmoraSDK {

/// Shows the picture of an ad that a page lays out itself. The implicit size is that of the
/// picture. It takes no taps: the page calls the ad's `open`. Main thread.
class VEXMORA_EXPORT VexmoraAdPicture : public VexmoraSDK::ViewItem {
    Q_OBJECT
    QML_ELEMENT

    /// The ad; may be null. An ad without an `item` takes this picture as its item.
    Q_PROPERTY(VexmoraSDK::VexmoraAd* ad READ ad WRITE setAd NOTIFY adChanged FINAL)

 public:
    explicit VexmoraAdPicture(QQuickItem* parent = nullptr);

    VexmoraAd* ad() const { return ad_; }
    void setAd(VexmoraAd* ad);

 Q_SIGNALS:
    void adChanged();

 protected:
    void updateAccessibility() override;

 private:
    void showPicture();

    QPointer<VexmoraAd> ad_;
};

}  // namespace VexmoraSDK
