// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"
#include "VexmoraSDK/platform/ui/Window.h"

namespace VexmoraSDK {

/// What a host's screen presents, one view at a time. From `begin` to `end` the view is in a
/// window, through which it can be dismissed. The completion of each dismissal runs once, in a
/// main-queue block of its own, so that a host may destroy the screen from inside: when the view
/// has left, when the presentation is destroyed meanwhile, or next when nothing is presented. Main
/// thread.
class VEXMORA_EXPORT Presentation {
 public:
    /// `leave` starts to take the view away, moving when `animated`, and has `end` called when that
    /// is done. Called once for each view that is dismissed.
    explicit Presentation(std::function<void(bool animated)> leave);
    /// Ends what is presented.
    ~Presentation();
    Presentation(const Presentation&) = delete;
    Presentation& operator=(const Presentation&) = delete;

    /// Presents `view`; nothing else is presented.
    void begin(std::shared_ptr<platform::View> view);
    /// The view has left.
    void end();

    /// Absent when nothing is presented.
    const std::shared_ptr<platform::View>& view() const { return view_; }
    /// Whether a dismissal is under way. Hand in no taps or keys then.
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
