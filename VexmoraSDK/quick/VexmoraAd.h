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

/// An ad without an item of its own, for pages that lay it out themselves: its texts are
/// properties, `VexmoraAdPicture` shows its picture, `open` opens its URL. It requests an ad once
/// `containerId` and one of `adSize`, `adType` and `viewType` are set; the first set one, in this
/// order, counts. When one of the four changes, it drops its ad and requests another, once for all
/// changes of one turn of the event loop, and ignores the earlier request. It may be destroyed at
/// any time, from inside the signals about its ad too. Main thread.
class VEXMORA_EXPORT VexmoraAd : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT

    /// The placement's name at the ad server. It goes into the request URL unescaped. A name that
    /// makes the URL invalid, such as one with a space, stops the program.
    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial ad.
    /// Any other text requests no ad and logs a warning.
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    /// A `Vexmora.AdType`; 0 for none. A type that no view shows causes an `InvalidAdTypeError`.
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    /// A `Vexmora.ViewType`, for every ad type that this kind of view can show; 0 for none.
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

    /// The state of the ad. It stays `Ready` while the next ad loads, and if that fails.
    Q_PROPERTY(VexmoraSDK::Vexmora::Status status READ status NOTIFY statusChanged FINAL)
    /// Why the last request brought no ad: a `Vexmora.ErrorCode`, or 0 after a timeout or without
    /// an error.
    Q_PROPERTY(int errorCode READ errorCode NOTIFY errorChanged FINAL)
    /// The error for developers; empty without one. It covers timeouts.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged FINAL)
    /// Whether at least half of the ad was visible for a second without a break.
    Q_PROPERTY(bool viewable READ isViewable NOTIFY viewableChanged FINAL)

    /// The seconds after which an ad is replaced, at least 10; 0, the default, means never. Only
    /// time counts in which the ad is visible in an active app. After each failure the interval
    /// doubles, up to 5 minutes. Interstitials are not refreshed.
    Q_PROPERTY(int refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                   refreshIntervalChanged FINAL)
    /// The seconds after which a request fails; 0 means no limit. Default: 60.
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged FINAL)
    /// The age in seconds from which a screen refuses an interstitial; 0 means no limit. Default:
    /// 3600.
    Q_PROPERTY(
        int expiresAfter READ expiresAfter WRITE setExpiresAfter NOTIFY expiresAfterChanged FINAL)
    /// How a screen presents an interstitial: `Vexmora.FillMode.AsIs`, as at first, in the size of
    /// its picture, `Fit` in that of its ad type. That of a `VexmoraAdItem`'s ad is the item's.
    Q_PROPERTY(VexmoraSDK::Vexmora::FillMode fillMode READ fillMode WRITE setFillMode NOTIFY
                   fillModeChanged FINAL)

    /// The contents of the ad; empty while there is none. Only native ads have a title, a
    /// description and a display name.
    Q_PROPERTY(QString title READ title NOTIFY adChanged FINAL)
    Q_PROPERTY(QString description READ description NOTIFY adChanged FINAL)
    Q_PROPERTY(QString displayName READ displayName NOTIFY adChanged FINAL)
    Q_PROPERTY(QString clickUrl READ clickUrl NOTIFY adChanged FINAL)

    /// The item whose visibility counts for `viewable`. Default: the ad's `VexmoraAdPicture`. Set
    /// it to the item that contains everything the page shows of the ad.
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
    Vexmora::FillMode fillMode() const { return fillMode_; }
    void setFillMode(Vexmora::FillMode mode);

    QString title() const { return textOf(&AdSlot::Ad::title); }
    QString description() const { return textOf(&AdSlot::Ad::description); }
    QString displayName() const { return textOf(&AdSlot::Ad::displayName); }
    QString clickUrl() const { return textOf(&AdSlot::Ad::clickUrl); }

    QQuickItem* item() const { return item_; }
    void setItem(QQuickItem* item);

    /// The slot behind the properties. The properties set its placement.
    AdSlot& slot() { return slot_; }
    const AdSlot& slot() const { return slot_; }

 public Q_SLOTS:
    /// Requests another ad. The one on show stays until the next is drawn.
    void reload();
    /// Taps the ad, which opens its URL. Does nothing unless a banner or native ad is ready.
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
    void fillModeChanged();
    void adChanged();
    void itemChanged();
    /// One of the four properties that choose the ad has changed.
    void placementChanged();

    /// An ad was fetched and drawn.
    void didReceiveAd();
    /// A request or an ad failed. `code` is a `Vexmora.ErrorCode`; `description` is for developers.
    /// A timeout changes `errorString` only.
    void didHaveError(int code, const QString& description);
    /// Never emitted: the host itself presents the screen.
    void willShowScreen();
    /// The close button of an interstitial ad was tapped.
    void willDismissScreen();
    /// The interstitial ad has left its screen.
    void didDismissScreen();
    /// The ad was tapped and `url` is about to be opened.
    void willLeaveApplication(const QString& url);
    /// At least half of the ad was visible for a second without a break. Emitted once for each ad.
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
    /// Drops the ad until the placement changes.
    void withdraw();
    void wake();
    platform::Size screenSize() const;
    /// Sets the item in which a screen presents the interstitial ad; null when none does.
    void setStage(QQuickItem* stage);
    void chooseWatched();
    void updateVisibility();
    QString textOf(std::string AdSlot::Ad::*text) const;

    /// The item that shows the ad, and sends its signals too; absent for an ad that a page lays out
    /// itself.
    VexmoraAdItem* shownBy_ = nullptr;
    bool isComplete_ = true;
    Vexmora::FillMode fillMode_ = Vexmora::FillMode::AsIs;
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
