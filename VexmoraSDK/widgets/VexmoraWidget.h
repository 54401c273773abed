// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtGui/QColor>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>
#include <initializer_list>
#include <memory>
#include <optional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/presenting/TapTracker.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// An ad among widgets. It requests an ad once `containerId` and one of `adSize`, `adType` and
/// `viewType` are set; the first set one, in this order, counts. When one of the four changes, it
/// drops its ad and requests another, once for all changes of one turn of the event loop, and
/// ignores the earlier request.
///
/// In a layout the widget has the size of the requested banner until an ad is drawn, then the size
/// that `fillMode` says, or less where there is less room. A tap, Return or Space opens the ad's
/// URL. The widget may be destroyed at any time, from inside the signals about its ad too. Main
/// thread.
///
/// An interstitial ad takes no space and is not shown in place: a `VexmoraWidgetScreen` presents
/// it.
class VEXMORA_EXPORT VexmoraWidget : public QWidget {
    Q_OBJECT

    /// The placement's name at the ad server. It goes into the request URL unescaped. A name that
    /// makes the URL invalid, such as one with a space, stops the program.
    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial ad.
    /// Any other text requests no ad and logs a warning.
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    /// The raw value of a `VexmoraAdType`; 0 for none. A type that no view shows causes an
    /// `InvalidAdTypeError`.
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    /// The raw value of a `VexmoraViewType`, for every ad type that this kind of view can show; 0
    /// for none.
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

    /// The state of the ad. It stays `Ready` while the next ad loads, and if that fails.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged FINAL)
    /// Why the last request brought no ad: one of `VexmoraErrorCodes`, or 0 after a timeout or
    /// without an error.
    Q_PROPERTY(int errorCode READ errorCode NOTIFY errorChanged FINAL)
    /// The error for developers; empty without one. It covers timeouts.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged FINAL)
    /// Whether at least half of the ad was visible for a second without a break.
    Q_PROPERTY(bool viewable READ isViewable NOTIFY viewableChanged FINAL)
    /// The contents of the ad; absent when none is drawn.
    Q_PROPERTY(std::optional<VexmoraSDK::AdSlot::Ad> ad READ ad NOTIFY adChanged FINAL)

    /// The seconds after which an ad is replaced, at least 10; 0, the default, means never. Only
    /// time counts in which the widget is visible in an active app. After each failure the interval
    /// doubles, up to 5 minutes. Interstitials are not refreshed.
    Q_PROPERTY(int refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                   refreshIntervalChanged FINAL)
    /// The seconds after which a request fails; 0 means no limit. Default: 60.
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged FINAL)
    /// The age in seconds from which a screen refuses an interstitial; 0 means no limit. Default:
    /// 3600.
    Q_PROPERTY(
        int expiresAfter READ expiresAfter WRITE setExpiresAfter NOTIFY expiresAfterChanged FINAL)
    /// How the ad fills the widget. `AsIs`: in its own size at the left, or at the right in
    /// right-to-left layouts. `Fit`: the widget has the size of the requested banner, or of the ad
    /// if that is unknown, may be as wide as its layout likes, and scales the ad.
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged FINAL)
    /// The colour of native ads' title and description. An invalid colour, the default, means the
    /// palette's text colour.
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged FINAL)
    /// The colour of native ads' display name. An invalid colour, the default, means the palette's
    /// placeholder text colour.
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor WRITE setSecondaryTextColor NOTIFY
                   secondaryTextColorChanged FINAL)

 public:
    enum class Status { Null, Loading, Ready, Error };
    Q_ENUM(Status)
    enum class FillMode { AsIs, Fit };
    Q_ENUM(FillMode)

    explicit VexmoraWidget(QWidget* parent = nullptr);
    /// Shows `view`, which may be null, as `setView` does.
    explicit VexmoraWidget(std::shared_ptr<VexmoraView> view, QWidget* parent = nullptr);
    ~VexmoraWidget() override;

    QString containerId() const;
    void setContainerId(const QString& containerId);
    QString adSize() const;
    void setAdSize(const QString& adSize);
    int adType() const;
    void setAdType(int adType);
    int viewType() const;
    void setViewType(int viewType);

    Status status() const;
    int errorCode() const;
    QString errorString() const;
    bool isViewable() const { return slot_.isViewable(); }
    const std::optional<AdSlot::Ad>& ad() const { return slot_.ad(); }

    int refreshInterval() const;
    void setRefreshInterval(int seconds);
    int timeout() const;
    void setTimeout(int seconds);
    int expiresAfter() const;
    void setExpiresAfter(int seconds);
    FillMode fillMode() const { return FillMode(fillMode_); }
    void setFillMode(FillMode mode);
    QColor textColor() const { return textColor_; }
    void setTextColor(const QColor& color);
    QColor secondaryTextColor() const { return secondaryTextColor_; }
    void setSecondaryTextColor(const QColor& color);

    /// The view of the ad that is drawn, or the view that the host has set; may be absent.
    const std::shared_ptr<VexmoraView>& view() const;
    /// Shows a view that the host has made with the factory, or nothing if it is null, instead of
    /// the ad of the properties; a later change of these replaces it. Its own delegate is called;
    /// the widget's signals and `status` do not report on it. Only one widget may show a view at a
    /// time.
    void setView(std::shared_ptr<VexmoraView> view);

    /// The slot behind the properties, for settings that have no property. The widget sets its
    /// placement.
    AdSlot& slot() { return slot_; }
    const AdSlot& slot() const { return slot_; }

    /// The largest size hint per side in points, however large a picture or a text is.
    static constexpr int kMaxSizeHint = 4096;
    QSize sizeHint() const override;
    int heightForWidth(int width) const override;

 public Q_SLOTS:
    /// Requests another ad. The one on show stays until the next is drawn.
    void reload();
    /// Taps the middle of the ad, for keyboard and screen readers. An interstitial ad ignores it.
    void press();

 Q_SIGNALS:
    void containerIdChanged();
    void adSizeChanged();
    void adTypeChanged();
    void viewTypeChanged();
    void statusChanged();
    void errorChanged();
    /// `ad()` and `view()` have changed.
    void adChanged();
    void viewableChanged();
    void refreshIntervalChanged();
    void timeoutChanged();
    void expiresAfterChanged();
    void fillModeChanged();
    void textColorChanged();
    void secondaryTextColorChanged();

    /// An ad was fetched and drawn.
    void didReceiveAd();
    /// A request or an ad failed. `code` is one of `VexmoraErrorCodes`; `description` is for
    /// developers. A timeout changes `errorString` only.
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
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    friend class VexmoraWidgetScreen;

    class Accessible;

    AdSlot::Delegate slotDelegate();
    void announce(std::initializer_list<void (VexmoraWidget::*)()> signalsInOrder);
    template <class Value>
    void changePlacement(Value AdSlot::Placement::*member, Value value,
                         void (VexmoraWidget::*changed)());
    void showInPlace(std::shared_ptr<VexmoraView> view);
    void showView(std::shared_ptr<VexmoraView> view);
    void viewChanged();
    void nameChanged();
    void applyTextColors();
    AdPosition position() const;
    QRect adRect() const;
    void setPresentedOn(VexmoraWidget* stage);
    void watchWindow();
    void updateVisibility();
    double visibleFraction() const;
    bool takesTapAt(QPointF position) const;
    void tap(QPointF position);

    AdSlot::Placement placement_;
    VexmoraSDK::FillMode fillMode_ = VexmoraSDK::FillMode::asIs;
    QColor textColor_;
    QColor secondaryTextColor_;
    QTimer wakeTimer_;
    AdSlot slot_;
    /// Null while an ad that the properties request is on show.
    std::shared_ptr<VexmoraView> hostView_;
    /// The view on show.
    std::shared_ptr<VexmoraView> view_;
    /// The slot's view of the last `adChanged`.
    std::shared_ptr<VexmoraView> adView_;
    bool tappable_ = false;
    /// The widget in which a screen presents this widget's interstitial ad; absent while none does.
    QPointer<VexmoraWidget> stage_;
    /// The window whose repaints may cover or uncover the ad.
    QPointer<QWidget> watchedWindow_;
    QPointer<QWindow> watchedHandle_;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
