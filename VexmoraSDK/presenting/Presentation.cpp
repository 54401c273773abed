// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/Presentation.h"

#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"

namespace VexmoraSDK {

/// It may outlive its presentation, because a view holds its window during a dismissal.
class Presentation::Controller : public platform::ViewController {
 public:
    explicit Controller(Presentation* presentation) : presentation_(presentation) {}

    void dismiss(bool animated, std::function<void()> completion) override {
        if (presentation_) {
            presentation_->dismiss(animated, std::move(completion));
        } else {
            platform::MainQueue::main()->async(std::move(completion));
        }
    }

    void detach() { presentation_ = nullptr; }

 private:
    Presentation* presentation_;
};

Presentation::Presentation(std::function<void(bool animated)> leave)
    : leave_(std::move(leave)), controller_(std::make_shared<Controller>(this)) {
    window_->setRootViewController(controller_);
}

Presentation::~Presentation() {
    controller_->detach();
    end();
}

void Presentation::begin(std::shared_ptr<platform::View> view) {
    view_ = std::move(view);
    view_->setWindow(window_);
}

void Presentation::end() {
    leaving_ = false;
    if (const auto view = std::exchange(view_, nullptr)) view->setWindow({});
    for (auto& completion : std::exchange(completions_, {}))
        platform::MainQueue::main()->async(std::move(completion));
}

void Presentation::dismiss(bool animated, std::function<void()> completion) {
    completions_.push_back(std::move(completion));
    if (!view_) return end();
    if (!std::exchange(leaving_, true)) leave_(animated);
}

}  // namespace VexmoraSDK
