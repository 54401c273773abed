#include "VexmoraSDK/platform/View.h"

#include <algorithm>

namespace VexmoraSDK::platform {

void View::setFrame(Rect frame) {
    if (frame == frame_) return;
    frame_ = frame;
    setNeedsDisplay();
}

Point View::center() const {
    return {frame_.origin.x + frame_.size.width / 2, frame_.origin.y + frame_.size.height / 2};
}

void View::setCenter(Point center) {
    const Size size = frame_.size;
    setFrame({{center.x - size.width / 2, center.y - size.height / 2}, size});
}

void View::setHidden(bool hidden) {
    hidden_ = hidden;
    setNeedsDisplay();
}

void View::setBackgroundColor(std::optional<Color> color) {
    backgroundColor_ = color;
    setNeedsDisplay();
}

void View::addSubview(const std::shared_ptr<View>& view) {
    view->removeFromSuperview();
    subviews_.push_back(view);
    view->superview_ = shared<View>();
    didAddSubview(*view);
    setNeedsDisplay();
}

void View::removeFromSuperview() {
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

void View::sizeToFit() {
    setFrame({frame_.origin, sizeThatFits(frame_.size)});
}

void View::addGestureRecognizer(std::shared_ptr<TapGestureRecognizer> recognizer) {
    gestureRecognizers_.push_back(std::move(recognizer));
}

std::shared_ptr<View> View::hitTest(Point point) {
    const auto [width, height] = frame_.size;
    const bool inside = point.x >= 0 && point.y >= 0 && point.x < width && point.y < height;
    if (hidden_ || !takesTouches() || !inside) return nullptr;
    for (auto subview = subviews_.rbegin(); subview != subviews_.rend(); ++subview) {
        const Point origin = (*subview)->frame_.origin;
        if (auto hit = (*subview)->hitTest({point.x - origin.x, point.y - origin.y})) return hit;
    }
    return shared<View>();
}

bool View::tap(Point point) {
    for (auto view = hitTest(point); view; view = view->superview()) {
        if (view->gestureRecognizers_.empty()) continue;
        const auto recognizer = view->gestureRecognizers_.back();
        recognizer->fire();
        return true;
    }
    return false;
}

void View::setNeedsDisplay() {
    if (displayCallback_) displayCallback_();
    if (const auto parent = superview()) parent->setNeedsDisplay();
}

}  // namespace VexmoraSDK::platform
