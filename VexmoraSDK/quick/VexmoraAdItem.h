#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QString>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/quick/ViewItem.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// An ad in a Qt Quick scene. It asks for an ad once `containerId` and one of `adSize`, `adType`
/// and `viewType` are set; where several are, the first of them in this order counts. Whenever one
/// of the four changes, it shows nothing and asks anew with a fresh view, once for all changes made
/// in one turn of the event loop; what the former view still brings is not heard.
///
/// The implicit size is that of `adSize` until an ad is drawn, then that of the ad, which lies at
/// the item's top left in its natural size. A tap on it opens the ad's address. The item may be
/// destroyed at any time, from inside its signals too. Main thread.
///
/// An interstitial ad is not shown in place and takes none: `VexmoraScreenItem` presents it. It is
/// as large as the item when it is asked for, or as the window where the item has no size.
class VEXMORA_EXPORT VexmoraAdItem : public VexmoraSDK::ViewItem {  // The QML tools need all of it.
    Q_OBJECT
    QML_NAMED_ELEMENT(VexmoraAdView)

    /// The placement's name at the ad server. It goes into the request address as it is: a name
    /// that makes no valid address, with a space in it for instance, stops the program.
    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial ad.
    /// For any other text no ad is asked for.
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    /// A `Vexmora.AdType`; 0 for none. A type that no view shows brings an `InvalidAdTypeError`.
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    /// A `Vexmora.ViewType`, for every ad type that this kind of view can show; 0 for none.
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

 public:
    explicit VexmoraAdItem(QQuickItem* parent = nullptr);
    ~VexmoraAdItem() override;

    const QString& containerId() const { return containerId_; }
    void setContainerId(const QString& containerId);
    const QString& adSize() const { return adSize_; }
    void setAdSize(const QString& adSize);
    int adType() const { return adType_; }
    void setAdType(int adType);
    int viewType() const { return viewType_; }
    void setViewType(int viewType);

    /// The item's ad view; may be absent.
    const std::shared_ptr<VexmoraView>& view() const { return adView_; }
    /// Shows a view that the host has made with the factory, in place of one that the properties
    /// ask for; a later change of these replaces it. Its own delegate hears of it, the item's
    /// signals tell nothing. One item at a time shows a view. Absent to show nothing.
    void setView(std::shared_ptr<VexmoraView> view);

 Q_SIGNALS:
    void containerIdChanged();
    void adSizeChanged();
    void adTypeChanged();
    void viewTypeChanged();

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

 protected:
    void componentComplete() override;
    void updateAccessibility() override;

 private:
    struct Listener;

    void choiceChanged();
    void askLater();
    void ask();
    std::shared_ptr<VexmoraView> makeView(const std::shared_ptr<VexmoraDelegate>& delegate) const;
    void stopListening();
    void place(std::shared_ptr<VexmoraView> view);
    QSizeF screenSize() const;

    QString containerId_;
    QString adSize_;
    int adType_ = 0;
    int viewType_ = 0;

    std::shared_ptr<VexmoraView> adView_;
    /// Present while the item has a view that the properties ask for.
    std::shared_ptr<Listener> listener_;
    bool willAskAnew_ = false;
};

}  // namespace VexmoraSDK
