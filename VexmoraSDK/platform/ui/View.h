// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/foundation/Color.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

class Coder;
class TapGestureRecognizer;
class Window;

/// The edges of its superview's safe area that a view keeps at a distance, in points, whatever the
/// superview's size: opposite pins stretch the view, one of two moves it.
struct Pins {
    std::optional<double> top;
    std::optional<double> left;
    std::optional<double> bottom;
    std::optional<double> right;
};

/// A rectangle of the user interface, in a tree with others. A presenter shows a tree: it paints
/// the root view and all below it, and hands taps in. Main thread only, but for the last reference
/// to a view, which may go anywhere: views are made by `create` and destroyed on the main thread.
class VEXMORA_EXPORT View : public Object {
 public:
    static constexpr std::string_view kClassName = "View";

    static std::shared_ptr<View> create(Rect frame = {}) { return makeSharedOnMain<View>(frame); }
    explicit View(Rect frame) : frame_(frame) {}
    /// A view as an interface file describes it: "frame", "hidden", "backgroundColor",
    /// "cornerRadius", "zPosition" and "pins".
    explicit View(const Coder& coder);

    std::string_view className() const override { return kClassName; }

    /// Position and size in the superview's coordinates.
    Rect frame() const { return frame_; }
    void setFrame(Rect frame) noexcept;
    /// The middle of the frame; setting it moves the frame.
    Point center() const;
    void setCenter(Point center) noexcept;

    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) noexcept;
    /// Absent means transparent.
    std::optional<Color> backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::optional<Color> color) noexcept;

    /// The radius of the background's corners, in points.
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius) noexcept;

    /// The subviews in the order in which they were added.
    const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
    /// The subviews from back to front: by `zPosition`, then in the order in which they were added.
    std::vector<std::shared_ptr<View>> subviewsInPaintOrder() const noexcept;
    /// 0 at first.
    double zPosition() const { return zPosition_; }
    void setZPosition(double position) noexcept;
    std::shared_ptr<View> superview() const { return superview_.lock(); }
    /// Adds `view` as the last subview, away from the superview that it had, then calls
    /// `didAddSubview`.
    void addSubview(std::shared_ptr<View> view) noexcept;
    void removeFromSuperview() noexcept;

    /// The size that the view would like within `proposed`; here, the size that it has.
    virtual Size sizeThatFits(Size proposed);
    /// Gives the view the size that fits, at the same origin.
    void sizeToFit() noexcept;

    /// Sets the depth of a notch or a rounded corner at each edge of this view. The presenter sets
    /// it on the root view.
    void setSafeAreaInsets(EdgeInsets insets) noexcept;
    /// Whether the left and the right pin of this view's subviews change places, as in apps that
    /// are read from right to left; set by the presenter on the root view.
    void setMirrored(bool mirrored) noexcept;

    /// The window that shows the tree; absent without one.
    std::shared_ptr<Window> window() const;
    /// Set by a presenter on the root view.
    void setWindow(std::weak_ptr<Window> window) { window_ = std::move(window); }

    void addGestureRecognizer(std::shared_ptr<TapGestureRecognizer> recognizer) noexcept;
    const std::vector<std::shared_ptr<TapGestureRecognizer>>& gestureRecognizers() const {
        return gestureRecognizers_;
    }

    /// The deepest view under `point`, which is in this view's own coordinates, the frontmost
    /// first; absent when there is none. Views that take no touches are skipped with all below
    /// them.
    std::shared_ptr<View> hitTest(Point point) noexcept;
    /// A tap at `point`, in this view's own coordinates: fires one recogniser of the deepest view
    /// under it that has any, once. Called by presenters. Whether one was fired.
    bool tap(Point point) noexcept;

    /// Tells the presenter of this tree that it must be painted again.
    void setNeedsDisplay() noexcept;
    /// Called whenever this view or one below it must be painted again or has another frame. Set on
    /// the root view by its presenter; may be empty.
    void setDisplayCallback(std::function<void()> callback) {
        displayCallback_ = std::move(callback);
    }

 protected:
    /// Called after each `addSubview`.
    virtual void didAddSubview(View& subview);
    /// Whether a finger can touch this view at all.
    virtual bool takesTouches() const { return true; }
    /// Whether a finger at `point`, in this view's own coordinates, is on this view.
    virtual bool isTouchedAt(Point point) const;

 private:
    void placeByPins(const View& superview);
    void placePinnedSubviews() noexcept;

    Rect frame_;
    bool hidden_ = false;
    std::optional<Color> backgroundColor_;
    double cornerRadius_ = 0;
    double zPosition_ = 0;
    Pins pins_;
    EdgeInsets safeAreaInsets_;
    bool mirrored_ = false;
    std::weak_ptr<Window> window_;
    std::vector<std::shared_ptr<View>> subviews_;
    std::weak_ptr<View> superview_;
    std::vector<std::shared_ptr<TapGestureRecognizer>> gestureRecognizers_;
    std::function<void()> displayCallback_;
};

}  // namespace VexmoraSDK::platform
