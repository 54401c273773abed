// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/View.h"

#include <algorithm>
#include <utility>

#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/platform/ui/TapGestureRecognizer.h"

namespace VexmoraSDK::platform {

View::View(const Coder& coder)
    : frame_(coder.rect("frame").value_or(Rect())),
      backgroundColor_(coder.color("backgroundColor")),
      cornerRadius_(coder.number("cornerRadius").value_or(0)),
      zPosition_(coder.number("zPosition").value_or(0)) {
    if (const auto* hidden = coder.decode<bool>("hidden")) hidden_ = *hidden;
    if (const auto* pins = coder.decode<Dictionary>("pins")) {
        const Coder edges(*pins);
        pins_ = {edges.number("top"), edges.number("left"), edges.number("bottom"),
                 edges.number("right")};
    }
}

void View::setFrame(Rect frame) noexcept {
    if (frame == frame_) return;
    const bool resized = !(frame.size == frame_.size);
    frame_ = frame;
    if (resized) placePinnedSubviews();
    setNeedsDisplay();
}

Point View::center() const {
    return {frame_.origin.x + frame_.size.width / 2, frame_.origin.y + frame_.size.height / 2};
}

void View::setCenter(Point center) noexcept {
    const Size size = frame_.size;
    setFrame({{center.x - size.width / 2, center.y - size.height / 2}, size});
}

void View::setHidden(bool hidden) noexcept {
    hidden_ = hidden;
    setNeedsDisplay();
}

void View::setBackgroundColor(std::optional<Color> color) noexcept {
    backgroundColor_ = color;
    setNeedsDisplay();
}

void View::setCornerRadius(double radius) noexcept {
    cornerRadius_ = radius;
    setNeedsDisplay();
}

std::vector<std::shared_ptr<View>> View::subviewsInPaintOrder() const noexcept {
    const auto zPosition = [](const auto& view) { return view->zPosition_; };
    std::vector<std::shared_ptr<View>> ordered;
    for (const auto& view : subviews_)
        ordered.insert(std::ranges::upper_bound(ordered, view->zPosition_, {}, zPosition), view);
    return ordered;
}

void View::setZPosition(double position) noexcept {
    zPosition_ = position;
    setNeedsDisplay();
}

void View::setSafeAreaInsets(EdgeInsets insets) noexcept {
    safeAreaInsets_ = insets;
    placePinnedSubviews();
}

void View::setMirrored(bool mirrored) noexcept {
    mirrored_ = mirrored;
    placePinnedSubviews();
}

void View::placePinnedSubviews() noexcept {
    const auto pinned = subviews_;
    for (const auto& subview : pinned)
        subview->placeByPins(*this);
}

void View::placeByPins(const View& superview) {
    const EdgeInsets& safe = superview.safeAreaInsets_;
    const Size outer = superview.frame_.size;
    const auto place = [](double& origin, double& length, std::optional<double> near,
                          std::optional<double> far, double begin, double end) {
        if (near && far) length = std::max(0.0, end - *far - (begin + *near));
        if (near) {
            origin = begin + *near;
        } else if (far) {
            origin = end - *far - length;
        }
    };
    Rect frame = frame_;
    auto [left, right] = std::pair(pins_.left, pins_.right);
    if (superview.mirrored_) std::swap(left, right);
    place(frame.origin.x, frame.size.width, left, right, safe.left, outer.width - safe.right);
    place(frame.origin.y, frame.size.height, pins_.top, pins_.bottom, safe.top,
          outer.height - safe.bottom);
    setFrame(frame);
}

std::shared_ptr<Window> View::window() const {
    const auto parent = superview();
    return parent ? parent->window() : window_.lock();
}

// The parameter is a reference of its own, because the host may release the view meanwhile.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void View::addSubview(std::shared_ptr<View> view) noexcept {
    view->removeFromSuperview();
    subviews_.push_back(view);
    view->superview_ = shared<View>();
    view->placeByPins(*this);
    didAddSubview(*view);
    setNeedsDisplay();
}

void View::removeFromSuperview() noexcept {
    const auto parent = superview();
    if (!parent) return;
    const auto self = shared<View>();
    std::erase(parent->subviews_, self);
    superview_.reset();
    parent->setNeedsDisplay();
}

void View::didAddSubview(View&) {}

Size View::sizeThatFits(Size) {
    return frame_.size;
}

void View::sizeToFit() noexcept {
    setFrame({frame_.origin, sizeThatFits(frame_.size)});
}

void View::addGestureRecognizer(std::shared_ptr<TapGestureRecognizer> recognizer) noexcept {
    gestureRecognizers_.push_back(std::move(recognizer));
}

std::shared_ptr<View> View::hitTest(Point point) noexcept {
    if (hidden_ || !takesTouches() || !isTouchedAt(point)) return nullptr;
    const auto ordered = subviewsInPaintOrder();
    for (auto subview = ordered.rbegin(); subview != ordered.rend(); ++subview) {
        const Point origin = (*subview)->frame_.origin;
        if (auto hit = (*subview)->hitTest({point.x - origin.x, point.y - origin.y})) return hit;
    }
    return shared<View>();
}

bool View::isTouchedAt(Point point) const {
    return point.x >= 0 && point.y >= 0 && point.x < frame_.size.width &&
           point.y < frame_.size.height;
}

bool View::tap(Point point) noexcept {
    for (auto view = hitTest(point); view; view = view->superview()) {
        if (view->gestureRecognizers_.empty()) continue;
        const auto recognizer = view->gestureRecognizers_.back();
        recognizer->fire();
        return true;
    }
    return false;
}

void View::setNeedsDisplay() noexcept {
    // The callback is copied, because the presenter may take it back from inside.
    if (const auto callback = displayCallback_) callback();
    if (const auto parent = superview()) parent->setNeedsDisplay();
}

}  // namespace VexmoraSDK::platform
