// SPDX-License-Identifier: MIT
#include "VexmoraSDK/sdl/VexmoraSdlView.h"

#include <SDL.h>

#include "VexmoraSDK/presenting/TapTarget.h"
#include "VexmoraSDK/sdl/AppState.h"
#include "VexmoraSDK/sdl/Pointer.h"
#include "VexmoraSDK/sdl/ViewTexture.h"

namespace VexmoraSDK {

struct VexmoraSdlView::Impl {
    Impl(SDL_Renderer* renderer, AdSlot& shownSlot)
        : space(renderer), texture(renderer), slot(shownSlot) {}

    void showAdOfSlot() {
        if (texture.view() == slot.view()) return;
        taps.cancel();
        texture.setView(slot.view());
        if (slot.view()) VexmoraSDK::setTextColors(*slot.view(), colors);
    }

    /// The position of the ad in `place`, in points of the place.
    AdPosition position() const {
        const double units = space.unitsPerPoint();
        return AdPosition::of(fillMode, texture.view()->frame().size,
                              {place.w / units, place.h / units});
    }

    platform::Point toAd(platform::Point point) const {
        const double units = space.unitsPerPoint();
        return position().toAd({(point.x - place.x) / units, (point.y - place.y) / units});
    }

    /// Whether the last drawn ad is still visible.
    bool showsAd() const {
        return visibleFraction > 0 && texture.view() && texture.view() == slot.view();
    }

    bool takes(platform::Point point) const {
        return showsAd() && takesTap(*texture.view(), toAd(point));
    }

    RendererSpace space;
    ViewTexture texture;
    AdSlot& slot;
    FillMode fillMode = FillMode::fit;
    NativeTextColors colors;
    double visibleFraction = 1;
    /// The place where the ad was last drawn.
    SDL_FRect place{};
    PointerTaps taps;
    /// Whether the mouse was on the ad at its last movement.
    bool hovered = false;
};

VexmoraSdlView::VexmoraSdlView(SDL_Renderer* renderer, AdSlot& slot)
    : impl_(std::make_unique<Impl>(renderer, slot)) {}

VexmoraSdlView::~VexmoraSdlView() {
    impl_->slot.setVisibleFraction(0);
}

void VexmoraSdlView::draw(const SDL_FRect& place) {
    Impl& self = *impl_;
    self.place = place;
    self.showAdOfSlot();
    if (self.texture.view()) {
        const double units = self.space.unitsPerPoint();
        const auto [origin, scale] = self.position();
        self.texture.draw({place.x + static_cast<float>(origin.x * units),
                           place.y + static_cast<float>(origin.y * units)},
                          scale * units);
    }
    // Last: the host may destroy this view meanwhile.
    if (self.slot.visibleFraction() != self.visibleFraction)
        self.slot.setVisibleFraction(self.visibleFraction);
}

bool VexmoraSdlView::handle(const SDL_Event& event) {
    Impl& self = *impl_;
    self.texture.handle(event);
    if (const auto active = appState(event, self.space)) {
        // The host may destroy this view meanwhile.
        self.slot.setActive(*active);
        return false;
    }

    const auto pointer = pointerEvent(event, self.space);
    if (!pointer) return false;
    const bool onAd = self.takes(pointer->position);
    if (pointer->kind == PointerEvent::Kind::press) {
        if (onAd) self.taps.press(*pointer);
        return onAd;
    }
    if (event.type == SDL_MOUSEMOTION) self.hovered = onAd;
    if (!self.taps.follows(*pointer)) return false;
    if (self.taps.isTap(*pointer, self.space) && onAd) {
        // The host may destroy this view during the tap.
        const auto view = self.texture.view();
        view->tap(self.toAd(pointer->position));
    }
    return true;
}

FillMode VexmoraSdlView::fillMode() const {
    return impl_->fillMode;
}

void VexmoraSdlView::setFillMode(FillMode mode) {
    impl_->fillMode = mode;
}

void VexmoraSdlView::setTextColors(const NativeTextColors& colors) {
    impl_->colors = colors;
    if (const auto& view = impl_->slot.view()) VexmoraSDK::setTextColors(*view, colors);
}

double VexmoraSdlView::visibleFraction() const {
    return impl_->visibleFraction;
}

void VexmoraSdlView::setVisibleFraction(double fraction) {
    impl_->visibleFraction = fraction;
    // The mouse may move while the ad is covered, without events for this view.
    if (fraction <= 0) impl_->hovered = false;
    impl_->slot.setVisibleFraction(fraction);
}

bool VexmoraSdlView::isHovered() const {
    return impl_->hovered && impl_->showsAd();
}

}  // namespace VexmoraSDK
