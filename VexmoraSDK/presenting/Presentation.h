// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"
#include "VexmoraSDK/platform/ui/Window.h"

namespace VexmoraSDK {

/// Presents views on a host's screen, one at a time. From `begin` to `end` the view is in a window,
/// through which it can be dismissed. The completion of each dismissal runs once, in a main-queue
/// block of its own, so that the host may destroy the screen inside it: after the view has left or
/// the presentation was destroyed, or at once if nothing is presented. Main thread.
class VEXMORA_EXPORT Presentation {
 public:
    /// `leave` starts to remove the view, with a movement if `animated`, and calls `end` when the
    /// view has left. It is called once per dismissed view.
    explicit Presentation(std::function<void(bool animated)> leave);
    /// Ends the presentation under way.
    ~Presentation();
    Presentation(const Presentation&) = delete;
    Presentation& operator=(const Presentation&) = delete;

    /// Presents `view`. Nothing else may be presented.
    void begin(std::shared_ptr<platform::View> view);
    /// Call it when the view has left.
    void end();

    /// The presented view; absent when there is none.
    const std::shared_ptr<platform::View>& view() const { return view_; }
    /// Whether a dismissal is under way. The view gets no taps or keys then.
    bool isLeaving() const { return leaving_; }

 private:
    class Controller;

    void dismiss(bool animated, std::function<void()> completion);

    const std::function<void(bool animated)> leave_;
    const std::shared_ptr<Controller> controller_;
    const std::shared_ptr<platform::Window> window_ = std::make_shared<platform::Window>();
    std::shared_ptr<platform::View> view_;
    bool leaving_ = false;
    std::vector<std::function<void()>> completions_;
};

}  // namespace VexmoraSDK
