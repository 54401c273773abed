// SPDX-License-Identifier: MIT
#include "VexmoraSDK/sdl/VexmoraSdlScreen.h"

#include <SDL.h>

#include <algorithm>
#include <optional>

#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/presenting/InterstitialLayout.h"
#include "VexmoraSDK/presenting/Presentation.h"
#include "VexmoraSDK/presenting/TapTarget.h"
#include "VexmoraSDK/sdl/AppState.h"
#include "VexmoraSDK/sdl/Pointer.h"
#include "VexmoraSDK/sdl/ViewTexture.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kDuration(250);

// An easing curve that starts fast.
double eased(double progress) {
    const double left = 1 - progress;
    return 1 - left * left * left;
}

bool isInput(const SDL_Event& event) {
    return event.type >= SDL_KEYDOWN && event.type < SDL_CLIPBOARDUPDATE;
}

bool isCloseKey(const SDL_Event& event, const RendererSpace& space) {
    switch (event.type) {
        case SDL_KEYDOWN: {
            const auto key = event.key.keysym.sym;
            return space.isOwn(event.key.windowID) && event.key.repeat == 0 &&
                   (key == SDLK_ESCAPE || key == SDLK_AC_BACK);
        }
        case SDL_CONTROLLERBUTTONDOWN: return event.cbutton.button == SDL_CONTROLLER_BUTTON_B;
        default: return false;
    }
}

}  // namespace

struct VexmoraSdlScreen::Impl {
    Impl(SDL_Renderer* renderer, AdSlot& presentedSlot)
        : space(renderer), texture(renderer), slot(presentedSlot) {
        slot.setScreenSize(space.size());
    }

    ~Impl() { stop(); }

    /// The part of the ad that has moved in, from 0 to 1.
    double shown() const {
        const double progress =
            movesSince ? std::min(1.0, double((now - *movesSince).count()) / kDuration.count())
                       : 0.0;
        return presentation.isLeaving() ? 1 - eased(progress) : eased(progress);
    }

    void leave(bool animated) {
        taps.cancel();
        movesSince.reset();
        if (!animated) stop();
    }

    void stop() {
        view.reset();
        texture.setView(nullptr);
        presentation.end();
        // Last: the host may destroy this screen meanwhile.
        slot.setVisibleFraction(0);
    }

    void fillWindow() {
        const auto size = space.size();
        if (size != slot.screenSize()) slot.setScreenSize(size);
        if (!view || (size == view->frame().size && insets == appliedInsets)) return;
        appliedInsets = insets;
        view->setFrame({{0, 0}, size});
        view->setSafeAreaInsets(insets);
        layOutInterstitial(*view, FillMode::fit);
    }

    void draw(milliseconds time) {
        now = time;
        fillWindow();
        if (!view) return;
        if (!movesSince) movesSince = now;
        const double fraction = shown();
        if (presentation.isLeaving() && fraction == 0) return stop();
        if (fraction > 0) {
            const double units = space.unitsPerPoint();
            texture.draw({0, static_cast<float>(top() * units)}, units);
        } else if (const auto button = closeButton()) {
            // Nothing is visible yet, and the frame that paints the ad then takes less time.
            button->layout();
        }
        // Last: the host may destroy this screen meanwhile.
        if (slot.visibleFraction() != fraction) slot.setVisibleFraction(fraction);
    }

    /// The y coordinate of the ad's top edge, in points.
    double top() const { return (1 - shown()) * view->frame().size.height; }

    std::shared_ptr<platform::Button> closeButton() const {
        const auto interstitial = std::dynamic_pointer_cast<VexmoraInterstitialView>(view);
        return interstitial ? interstitial->closeButton() : nullptr;
    }

    void press() {
        if (const auto button = closeButton()) button->press();
    }

    void handle(const PointerEvent& event) {
        const double units = space.unitsPerPoint();
        const platform::Point point{event.position.x / units, event.position.y / units - top()};
        const bool onControl = takesTap(*view, point);
        if (event.kind == PointerEvent::Kind::press) {
            if (onControl) taps.press(event);
        } else if (taps.isTap(event, space) && onControl) {
            // The host may destroy this screen during the tap.
            const auto tapped = view;
            tapped->tap(point);
        }
    }

    RendererSpace space;
    ViewTexture texture;
    AdSlot& slot;
    Presentation presentation{[this](bool animated) { leave(animated); }};
    std::shared_ptr<VexmoraView> view;
    platform::EdgeInsets insets;
    /// The insets of the last layout; absent before the first.
    std::optional<platform::EdgeInsets> appliedInsets;
    milliseconds now{0};
    /// The time of the first frame of the movement in or out.
    std::optional<milliseconds> movesSince;
    PointerTaps taps;
};

VexmoraSdlScreen::VexmoraSdlScreen(SDL_Renderer* renderer, AdSlot& slot)
    : impl_(std::make_unique<Impl>(renderer, slot)) {}

VexmoraSdlScreen::~VexmoraSdlScreen() = default;

bool VexmoraSdlScreen::present() {
    Impl& self = *impl_;
    if (self.view || !self.slot.isPresentable()) return false;
    self.view = self.slot.view();
    self.movesSince.reset();
    self.appliedInsets.reset();
    self.presentation.begin(self.view);
    self.slot.setPresented();
    self.fillWindow();
    self.texture.setView(self.view);
    return true;
}

bool VexmoraSdlScreen::isPresenting() const {
    return impl_->view != nullptr;
}

bool VexmoraSdlScreen::coversWindow() const {
    return impl_->view && !impl_->presentation.isLeaving() && impl_->shown() == 1;
}

void VexmoraSdlScreen::draw(milliseconds now) {
    impl_->draw(now);
}

bool VexmoraSdlScreen::handle(const SDL_Event& event) {
    Impl& self = *impl_;
    self.texture.handle(event);
    if (const auto active = appState(event, self.space)) {
        // The host may destroy this screen meanwhile.
        self.slot.setActive(*active);
        return false;
    }
    if (!self.view || !isInput(event)) return false;
    if (self.presentation.isLeaving()) return true;
    if (isCloseKey(event, self.space)) {
        self.press();
    } else if (const auto pointer = pointerEvent(event, self.space)) {
        self.handle(*pointer);
    }
    return true;
}

void VexmoraSdlScreen::setSafeAreaInsets(platform::EdgeInsets insets) {
    impl_->insets = insets;
}

}  // namespace VexmoraSDK
