// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtQml/QQmlParserStatus>
#include <QtQuick/QQuickItem>
#include <initializer_list>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/quick/Vexmora.h"

namespace VexmoraSDK {

class VexmoraAdItem;
class VisibilityWatcher;

/// An ad without a picture on screen, for pages that lay it out themselves: its texts are
/// properties, `VexmoraAdPicture` shows its picture, `open` follows it. It asks for an ad once
/// `containerId` and one of `adSize`, `adType` and `viewType` are set; where several are, the first
/// of them in this order counts. Whenever one of the four changes, it has no ad and asks anew, once
/// for all changes made in one turn of the event loop; what the former request still brings is not
/// heard. It may be destroyed at any time, from inside its signals too. Main thread.
class VEXMORA_EXPORT VexmoraAd : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT

    /// The placement's name at the ad server. It goes into the request address as it is: a name
    /// that makes no valid address, with a space in it for instance, stops the program.
    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial ad.
    /// For any other text no ad is asked for, and a warning says so.
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    /// A `Vexmora.AdType`; 0 for none. A type that no view shows brings an `InvalidAdTypeError`.
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    /// A `Vexmora.ViewType`, for every ad type that this kind of view can show; 0 for none.
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

    /// What became of the first ad that was asked for. It stays `Ready` while the next ad loads,
    /// and when that fails.
    Q_PROPERTY(VexmoraSDK::Vexmora::Status status READ status NOTIFY statusChanged FINAL)
    /// Why the last request brought no ad: a `Vexmora.ErrorCode`, or 0 when its time was over or
    /// nothing failed.
    Q_PROPERTY(int errorCode READ errorCode NOTIFY errorChanged FINAL)
    /// The same for developers; empty when nothing failed.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged FINAL)
    /// Whether at least half of the ad was visible for a second without a break.
    Q_PROPERTY(bool viewable READ isViewable NOTIFY viewableChanged FINAL)

    /// For how many seconds an ad is shown before the next is asked for, at least 10; 0, as at
    /// first, for ever. Only time counts in which the ad is visible in an active app. After
    /// failures the wait doubles, up to 5 minutes. Interstitials are not asked for anew.
    Q_PROPERTY(int refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                   refreshIntervalChanged FINAL)
    /// After how many seconds an ad that is not drawn has failed; 0 for no limit. 60 at first.
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged FINAL)
    /// The age in seconds from which a screen presents an interstitial no more; 0 for never. 3600
    /// at first.
    Q_PROPERTY(
        int expiresAfter READ expiresAfter WRITE setExpiresAfter NOTIFY expiresAfterChanged FINAL)

    /// What the ad says; empty while there is none. Only native ads have a title, a description and
    /// a display name.
    Q_PROPERTY(QString title READ title NOTIFY adChanged FINAL)
    Q_PROPERTY(QString description READ description NOTIFY adChanged FINAL)
    Q_PROPERTY(QString displayName READ displayName NOTIFY adChanged FINAL)
    Q_PROPERTY(QString clickUrl READ clickUrl NOTIFY adChanged FINAL)

    /// What must be seen for the ad to become viewable. At first the `VexmoraAdPicture` of the ad;
    /// set it to the item around all that the page shows of the ad.
    Q_PROPERTY(QQuickItem* item READ item WRITE setItem NOTIFY itemChanged FINAL)

 public:
    explicit VexmoraAd(QObject* parent = nullptr);
    ~VexmoraAd() override;

    QString containerId() const;
    void setContainerId(const QString& containerId);
    QString adSize() const;
    void setAdSize(const QString& adSize);
    int adType() const;
    void setAdType(int adType);
    int viewType() const;
    void setViewType(int viewType);

    Vexmora::Status status() const;
    int errorCode() const;
    QString errorString() const;
    bool isViewable() const { return slot_.isViewable(); }

    int refreshInterval() const;
    void setRefreshInterval(int seconds);
    int timeout() const;
    void setTimeout(int seconds);
    int expiresAfter() const;
    void setExpiresAfter(int seconds);

    QString title() const { return textOf(&AdSlot::Ad::title); }
    QString description() const { return textOf(&AdSlot::Ad::description); }
    QString displayName() const { return textOf(&AdSlot::Ad::displayName); }
    QString clickUrl() const { return textOf(&AdSlot::Ad::clickUrl); }

    QQuickItem* item() const { return item_; }
    void setItem(QQuickItem* item);

    /// The slot behind the properties. Its placement is that of the properties.
    AdSlot& slot() { return slot_; }
    const AdSlot& slot() const { return slot_; }

 public Q_SLOTS:
    /// Asks for another ad. The one on show stays until the next is drawn.
    void reload();
    /// Taps the ad, which opens its address. Does nothing unless a banner or native ad is ready.
    void open();

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
    void expiresAfterChanged();
    void adChanged();
    void itemChanged();
    /// Another ad is asked for.
    void placementChanged();

    /// An ad was fetched and drawn.
    void didReceiveAd();
    /// Something failed. `code` is a `Vexmora.ErrorCode`; `description` is for developers.
    void didHaveError(int code, const QString& description);
    /// Never sent by the library: the host, which shows the screen, knows when.
    void willShowScreen();
    /// The close button of an interstitial ad was tapped.
    void willDismissScreen();
    /// The screen of an interstitial ad has gone.
    void didDismissScreen();
    /// The ad was tapped and its address `url` is about to be opened.
    void willLeaveApplication(const QString& url);
    /// At least half of the ad was visible for a second without a break. Sent once for each ad.
    void becameViewable();

 protected:
    void classBegin() override;
    void componentComplete() override;

 private:
    friend class VexmoraAdItem;
    friend class VexmoraAdPicture;
    friend class VexmoraScreenItem;

    AdSlot::Delegate slotDelegate();
    void send(void (VexmoraAd::*signal)());
    void announce(std::initializer_list<void (VexmoraAd::*)()> signalsInOrder);
    template <class Value>
    void changePlacement(Value AdSlot::Placement::*member, Value value,
                         void (VexmoraAd::*changed)());
    /// Has no ad until the placement changes.
    void withdraw();
    void wake();
    platform::Size screenSize() const;
    /// Where an interstitial ad is presented; absent when it is not.
    void setStage(QQuickItem* stage);
    void chooseWatched();
    void updateVisibility();
    QString textOf(std::string AdSlot::Ad::*text) const;

    /// The item that shows the ad, and sends its signals too; absent for an ad that a page lays out
    /// itself.
    VexmoraAdItem* shownBy_ = nullptr;
    bool isComplete_ = true;
    AdSlot::Placement placement_;
    QTimer wakeTimer_;
    AdSlot slot_;
    /// The view that the slot had when `adChanged` was last sent.
    std::shared_ptr<VexmoraView> toldView_;
    QPointer<QQuickItem> item_;
    QPointer<QQuickItem> stage_;
    /// The view that is presented on the stage.
    std::shared_ptr<VexmoraView> presentedView_;
    const std::unique_ptr<VisibilityWatcher> watcher_;
};

}  // namespace VexmoraSDK
