// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <memory>

#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK {

/// A view tree as a texture of a renderer, painted again only when the tree has changed, another
/// size is asked for, or the texture was lost. Main thread.
class ViewTexture {
 public:
    explicit ViewTexture(SDL_Renderer* renderer) : renderer_(renderer) {}
    ~ViewTexture();
    ViewTexture(const ViewTexture&) = delete;
    ViewTexture& operator=(const ViewTexture&) = delete;

    const std::shared_ptr<platform::View>& view() const { return view_; }
    /// Shows `view`, which may be absent. The texture takes its display callback meanwhile.
    void setView(std::shared_ptr<platform::View> view);

    /// Copies the view to `origin`. One point of the view takes `scale` units of the renderer.
    void draw(SDL_FPoint origin, double scale);

    /// Releases the texture when `event` says that the device has lost it.
    void handle(const SDL_Event& event);

 private:
    struct Destroy {
        void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
    };

    void paint(int width, int height, double scale);
    bool coversItself(int width, int height, double scale) const;
    double largestScale(platform::Size view) const;

    SDL_Renderer* const renderer_;
    std::shared_ptr<platform::View> view_;
    bool isOutdated_ = true;
    double paintedScale_ = 0;
    int width_ = 0;
    int height_ = 0;
    std::unique_ptr<SDL_Texture, Destroy> texture_;
};

}  // namespace VexmoraSDK
