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

/// An ad among widgets. It asks for an ad once `containerId` and one of `adSize`, `adType` and
/// `viewType` are set; where several are, the first of them in this order counts. Whenever one of
/// the four changes, it shows nothing and asks anew, once for all changes made in one turn of the
/// event loop; what the former ad still brings is not heard.
///
/// In a layout the widget is as large as the banner that is asked for by size or type until an ad
/// is drawn, then as `fillMode` says, and smaller where there is less room. A tap, Return or Space
/// opens the ad's address. The widget may be destroyed at any time, from inside its signals too.
/// Main thread.
///
/// An interstitial ad is not shown in place and takes none: `VexmoraWidgetScreen` presents it.
class VEXMORA_EXPORT VexmoraWidget : public QWidget {
    Q_OBJECT

    /// The placement's name at the ad server. It goes into the request address as it is: a name
    /// that makes no valid address, with a space in it for instance, stops the program.
    Q_PROPERTY(
        QString containerId READ containerId WRITE setContainerId NOTIFY containerIdChanged FINAL)
    /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial ad.
    /// For any other text no ad is asked for, and a warning says so.
    Q_PROPERTY(QString adSize READ adSize WRITE setAdSize NOTIFY adSizeChanged FINAL)
    /// The raw value of a `VexmoraAdType`; 0 for none. A type that no view shows brings an
    /// `InvalidAdTypeError`.
    Q_PROPERTY(int adType READ adType WRITE setAdType NOTIFY adTypeChanged FINAL)
    /// The raw value of a `VexmoraViewType`, for every ad type that this kind of view can show; 0
    /// for none.
    Q_PROPERTY(int viewType READ viewType WRITE setViewType NOTIFY viewTypeChanged FINAL)

    /// How far the widget is with the first ad that it asked for. It stays `Ready` while the next
    /// ad loads, and when that fails.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged FINAL)
    /// Why the last request brought no ad: one of `VexmoraErrorCodes`, or 0 when time ran out or
    /// there was no error.
    Q_PROPERTY(int errorCode READ errorCode NOTIFY errorChanged FINAL)
    /// The same for developers; empty when there was no error.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged FINAL)
    /// Whether at least half of the ad was visible for a second without a break.
    Q_PROPERTY(bool viewable READ isViewable NOTIFY viewableChanged FINAL)
    /// What the ad says; absent when none is drawn.
    Q_PROPERTY(std::optional<VexmoraSDK::AdSlot::Ad> ad READ ad NOTIFY adChanged FINAL)

    /// In seconds, at least 10, for how long an ad is shown before the next is asked for; 0, as at
    /// first, for ever. Only time counts in which the widget is visible in an active app. After
    /// failures the wait doubles, up to 5 minutes. Interstitials are not asked for anew.
    Q_PROPERTY(int refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                   refreshIntervalChanged FINAL)
    /// In seconds: an ad that is not drawn by then has failed; 0 for no limit. 60 at first.
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged FINAL)
    /// The age in seconds from which a screen presents an interstitial no more; 0 for never. 3600
    /// at first.
    Q_PROPERTY(
        int expiresAfter READ expiresAfter WRITE setExpiresAfter NOTIFY expiresAfterChanged FINAL)
    /// How the ad lies in the widget; `AsIs` at its right when it is laid out from right to left.
    /// With `Fit` the widget has the size of the banner that is asked for, or of the ad where that
    /// is not known, and may be as wide as its layout likes.
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged FINAL)
    /// Of the title and the description of native ads; an invalid colour, as at first, is that of
    /// the palette's texts.
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged FINAL)
    /// Of the display name of native ads; an invalid colour, as at first, is that of the palette's
    /// placeholder texts.
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor WRITE setSecondaryTextColor NOTIFY
                   secondaryTextColorChanged FINAL)

 public:
    enum class Status { Null, Loading, Ready, Error };
    Q_ENUM(Status)
    enum class FillMode { AsIs, Fit };
    Q_ENUM(FillMode)

    explicit VexmoraWidget(QWidget* parent = nullptr);
    /// Shows `view`, as the factory has made it: it may be absent.
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
    /// Shows a view that the host has made with the factory, in place of an ad that the properties
    /// ask for; a later change of these replaces it. Its own delegate hears of it, the widget's
    /// signals and `status` tell nothing. One widget at a time shows a view. Absent for none.
    void setView(std::shared_ptr<VexmoraView> view);

    /// What is behind the properties, for what has none. Its placement is that of the widget.
    AdSlot& slot() { return slot_; }
    const AdSlot& slot() const { return slot_; }

    /// No widget asks for more points a side, however large a picture or a text is.
    static constexpr int kMaxSizeHint = 4096;
    QSize sizeHint() const override;
    int heightForWidth(int width) const override;

 public Q_SLOTS:
    /// Asks for another ad. The one that is shown stays until the next is drawn.
    void reload();
    /// A tap in the middle of the ad, for those who cannot point. An interstitial ad takes none.
    void press();

 Q_SIGNALS:
    void containerIdChanged();
    void adSizeChanged();
    void adTypeChanged();
    void viewTypeChanged();
    void statusChanged();
    void errorChanged();
    /// `ad()` and `view()` are others.
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
    /// Something failed. `code` is one of `VexmoraErrorCodes`; `description` is for developers.
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
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    friend class VexmoraWidgetScreen;

    AdSlot::Delegate slotDelegate();
    void announce(std::initializer_list<void (VexmoraWidget::*)()> signalsInOrder);
    template <class Value>
    void changePlacement(Value AdSlot::Placement::*member, Value value,
                         void (VexmoraWidget::*changed)());
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
    /// The view that is painted.
    std::shared_ptr<VexmoraView> view_;
    /// The slot's view when it was last looked at.
    std::shared_ptr<VexmoraView> adView_;
    bool tappable_ = false;
    /// Where an interstitial ad of this widget is shown; absent as long as none is.
    QPointer<VexmoraWidget> stage_;
    /// The window whose changes may cover or uncover the ad.
    QPointer<QWidget> watchedWindow_;
    QPointer<QWindow> watchedHandle_;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
