#pragma once

#include <QtCore/QPointF>
#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>
#include <optional>
#include <utility>

namespace VexmoraSDK::platform {

/// Tells taps from drags. Positions are those of a finger or a mouse in its scene or on its screen,
/// which stay the same when what is touched moves away under it.
class TapTracker {
 public:
    void press(QPointF position) { pressedAt_ = position; }

    void move(QPointF position) {
        const int dragDistance = QGuiApplication::styleHints()->startDragDistance();
        if (pressedAt_ && (position - *pressedAt_).manhattanLength() >= dragDistance) cancel();
    }

    /// Whether that was a tap.
    bool release() { return std::exchange(pressedAt_, std::nullopt).has_value(); }

    void cancel() { pressedAt_.reset(); }

 private:
    std::optional<QPointF> pressedAt_;
};

}  // namespace VexmoraSDK::platform
