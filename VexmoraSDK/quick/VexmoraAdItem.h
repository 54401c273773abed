// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QString>
#include <QtGui/QColor>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/quick/VexmoraAd.h"
#include "VexmoraSDK/quick/ViewItem.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// An ad in a Qt Quick scene. `VexmoraAd` documents the properties that both have. After a change
/// of `containerId`, `adSize`, `adType` or `viewType` it shows nothing until the next ad is drawn.
///
/// The implicit size is that of `adSize` or of the ad type until an ad is drawn, then that of the
/// ad; with `fillMode: Vexmora.FillMode.Fit` it does not change. A tap on the ad, or Return or
/// Space, opens its URL. Screen readers know it as a link, items made in C++ too once a QML engine
/// of the process has imported QtQuick. The item may be destroyed at any time, from inside the
/// signals about its ad too. Main thread.
///
/// An interstitial ad takes no space and is not shown in place: a `VexmoraScreenItem` presents it.
class VEXMORA_EXPORT VexmoraAdItem : public VexmoraSDK::ViewItem {  // The QML tools need all of it.
    Q_OBJECT
    QML_NAMED_ELEMENT(VexmoraAdView)

    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

    Q_PROPERTY(VexmoraSDK::Vexmora::Status status READ status NOTIFY statusChanged FINAL)
    Q_PROPERTY(int errorCode READ errorCode NOTIFY errorChanged FINAL)
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged FINAL)
    Q_PROPERTY(bool viewable READ isViewable NOTIFY viewableChanged FINAL)
    Q_PROPERTY(int refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                   refreshIntervalChanged FINAL)
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged FINAL)

    /// The colour of native ads' title and description. An invalid colour, the default, means
    /// black.
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged FINAL)
    /// The colour of native ads' display name. An invalid colour, the default, means grey.
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor WRITE setSecondaryTextColor NOTIFY
                   secondaryTextColorChanged FINAL)
    /// The ad behind the properties; always the same object.
    Q_PROPERTY(VexmoraSDK::VexmoraAd* ad READ ad CONSTANT FINAL)

 public:
    explicit VexmoraAdItem(QQuickItem* parent = nullptr);
    ~VexmoraAdItem() override;

    QString containerId() const { return ad_->containerId(); }
    void setContainerId(const QString& containerId) { ad_->setContainerId(containerId); }
    QString adSize() const { return ad_->adSize(); }
    void setAdSize(const QString& adSize) { ad_->setAdSize(adSize); }
    int adType() const { return ad_->adType(); }
    void setAdType(int adType) { ad_->setAdType(adType); }
    int viewType() const { return ad_->viewType(); }
    void setViewType(int viewType) { ad_->setViewType(viewType); }
    Vexmora::Status status() const { return ad_->status(); }
    int errorCode() const { return ad_->errorCode(); }
    QString errorString() const { return ad_->errorString(); }
    bool isViewable() const { return ad_->isViewable(); }
    int refreshInterval() const { return ad_->refreshInterval(); }
    void setRefreshInterval(int seconds) { ad_->setRefreshInterval(seconds); }
    int timeout() const { return ad_->timeout(); }
    void setTimeout(int seconds) { ad_->setTimeout(seconds); }
    VexmoraAd* ad() const { return ad_; }

    const QColor& textColor() const { return textColor_; }
    void setTextColor(const QColor& color);
    const QColor& secondaryTextColor() const { return secondaryTextColor_; }
    void setSecondaryTextColor(const QColor& color);

    /// The view of the ad that is drawn, or the view that the host has set; may be absent.
    const std::shared_ptr<VexmoraView>& view() const;
    /// Shows a view that the host has made with the factory, or nothing if it is null, instead of
    /// the ad of the properties; a later change of these replaces it. Its own delegate is called;
    /// the item's signals and `status` do not report on it. Only one item may show a view at a
    /// time.
    void setView(std::shared_ptr<VexmoraView> view);

 public Q_SLOTS:
    void reload() { ad_->reload(); }

 Q_SIGNALS:
    void containerIdChanged();
    void adSizeChanged();
    void adTypeChanged();
    void viewTypeChanged();
    void statusChanged();
    void errorChanged();
    void viewableChanged();
    void refreshIntervalChanged();
    void timeoutChanged();
    void textColorChanged();
    void secondaryTextColorChanged();

    void didReceiveAd();
    void didHaveError(int code, const QString& description);
    void willShowScreen();
    void willDismissScreen();
    void didDismissScreen();
    void willLeaveApplication(const QString& url);
    void becameViewable();

 protected:
    void classBegin() override;
    void componentComplete() override;
    void updateAccessibility() override;

 private:
    friend class VexmoraAd;

    /// Sends the item's signal of the same name, if it has one. The ad calls this: a connection for
    /// each signal would have to be made and broken for every item.
    void handOn(void (VexmoraAd::*signal)());
    void placementChanges();
    void place(std::shared_ptr<VexmoraView> view);
    void applyTextColors();

    VexmoraAd* const ad_;
    /// The host's view; absent while the ad of the properties is shown.
    std::shared_ptr<VexmoraView> hostView_;
    QColor textColor_;
    QColor secondaryTextColor_;
};

}  // namespace VexmoraSDK
