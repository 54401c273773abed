// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <map>
#include <memory>
#include <string>

#include "VexmoraSDK/platform/images/Image.h"
#include "VexmoraSDK/platform/ui/View.h"

/// Draws texts, pictures and rounded shapes. The library's painter paints each once; then it is
/// kept as a texture.
class Canvas {
 public:
    enum class Align { left, center, right };

    struct Font {
        float size = 14;
        bool bold = false;
        SDL_Color color = {255, 255, 255, 255};
    };

    explicit Canvas(SDL_Renderer* renderer) : renderer_(renderer) {}

    void fill(SDL_FRect rect, SDL_Color color);
    void shape(SDL_FRect rect, float radius, SDL_Color color);
    /// Draws one line, or several if `width` is given; `x` is the left, the middle or the right.
    /// Returns the height.
    float text(const std::string& text, float x, float y, const Font& font,
               Align align = Align::left, float width = 0);
    /// Draws a picture as large as fits into `rect`.
    void picture(const std::shared_ptr<const VexmoraSDK::platform::Image>& image, SDL_FRect rect);

    /// Call it when the textures are lost or the scale has changed.
    void forgetTextures() { textures_.clear(); }

 private:
    struct Destroy {
        void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
    };
    struct Painted {
        float width = 0;
        float height = 0;
        std::unique_ptr<SDL_Texture, Destroy> texture;
    };

    template <class MakeView>
    const Painted& painted(const std::string& key, MakeView makeView);
    Painted paint(VexmoraSDK::platform::View& view);
    void copy(const Painted& painted, float x, float y);

    SDL_Renderer* const renderer_;
    std::map<std::string, Painted> textures_;
};
