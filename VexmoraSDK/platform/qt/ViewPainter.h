#pragma once

class QPainter;

namespace VexmoraSDK::platform {

class View;

/// Paints `view`, its origin at the painter's, and all that is below it. While the main thread
/// does nothing else: on it, or on a render thread that holds it up.
void paintView(QPainter& painter, View& view);

}  // namespace VexmoraSDK::platform
