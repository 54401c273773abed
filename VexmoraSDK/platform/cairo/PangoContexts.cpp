// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/cairo/PangoContexts.h"

#include <hb-ot.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

#include "VexmoraSDK/platform/cairo/FontFinder.h"
#include "VexmoraSDK/platform/cairo/FontImpl.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/foundation/WorkerThread.h"

namespace VexmoraSDK::platform {
namespace {

PangoContext* makeContext(PangoFontMap* fonts, PangoDirection direction) {
    PangoContext* context = pango_font_map_create_context(fonts);
    pango_context_set_base_dir(context, direction);
    // A text then has the same width, and so the same lines, at every scale of the screen.
    pango_context_set_round_glyph_positions(context, FALSE);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    return context;
}

struct Contexts {
    PangoFontMap* fonts = pango_cairo_font_map_new();
    PangoContext* leftToRight = makeContext(fonts, PANGO_DIRECTION_LTR);
    PangoContext* rightToLeft = makeContext(fonts, PANGO_DIRECTION_RTL);
    FontsVersion version = fontsVersion();
};

Contexts& contexts() {
    static NoDestructor<Contexts> contexts;
    return *contexts;
}

/// Held by the search while it uses HarfBuzz.
struct Shaping {
    std::mutex mutex;
    bool mayBegin = true;
};

Shaping& shaping() {
    static NoDestructor<Shaping> shaping;
    return *shaping;
}

/// Finds the fonts of ads and those that stand in for them where they lack a letter.
void findFonts() {
    // Fontconfig alone works here, for many seconds where it has no cache of the device's fonts.
    const auto title = Font::named("Helvetica-Bold", 13);
    const auto text = Font::named("Helvetica", 12);
    const std::optional closeButton(Font::system(26));

    const std::lock_guard lock(shaping().mutex);
    if (!shaping().mayBegin) return;
    for (const auto& font : {title, text, closeButton}) {
        if (!font) continue;
        const LayoutPointer layout(pango_layout_new(contexts().leftToRight));
        const auto description = pangoFont(*font);
        pango_layout_set_font_description(layout.get(), description.get());
        pango_layout_set_text(layout.get(), "Ad ×☕", -1);
        pango_layout_get_line_count(layout.get());
        // HarfBuzz reads the font's table of heights at the first question.
        const CPointer<PangoFont, g_object_unref> loaded(
            pango_context_load_font(contexts().leftToRight, description.get()));
        if (loaded) {
            hb_ot_metrics_get_position(pango_font_get_hb_font(loaded.get()),
                                       HB_OT_METRICS_TAG_HORIZONTAL_CLIPPING_ASCENT, nullptr);
        }
    }
}

/// Becomes ready when the fonts are found.
std::shared_future<void>& search() {
    static NoDestructor<std::shared_future<void>> search;
    return *search;
}

void waitForSearch() {
    search().wait_for(std::chrono::seconds(1));
    // A search that still reads fonts is left behind, and does not come to HarfBuzz.
    const std::lock_guard lock(shaping().mutex);
    shaping().mayBegin = false;
}

}  // namespace

// Exit handlers run in reverse order of registration. HarfBuzz registers its own on first use, and
// they destroy objects that a search and the blocks of the main queue use.
void prepareFontsForEnd() {
    hb_language_get_default();
    hb_buffer_t* const buffer = hb_buffer_create();
    hb_buffer_add_utf8(buffer, "a", 1, 0, 1);
    hb_buffer_guess_segment_properties(buffer);
    hb_face_t* const face = hb_face_create(hb_blob_get_empty(), 0);
    hb_font_t* const font = hb_font_create(face);
    hb_shape(font, buffer, nullptr, 0);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_buffer_destroy(buffer);
}

bool findFontsInBackground() {
    if (search().valid())
        return search().wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    prepareFontsForEnd();
    const auto found = std::make_shared<std::promise<void>>();
    search() = found->get_future();
    if (std::atexit(waitForSearch) != 0) fatalError("no exit handler to be had");
    const auto thread = startWorkerThread("vexmora-fonts", [found] {
        findFonts();
        found->set_value();
    });
    if (thread)
        pthread_detach(*thread);
    else
        found->set_value();
    return false;
}

PangoContext* PangoContexts::forDirection(PangoDirection direction) {
    if (search().valid()) search().wait();
    if (const auto version = fontsVersion(); version != contexts().version) {
        contexts().version = version;
        pango_fc_font_map_config_changed(PANGO_FC_FONT_MAP(contexts().fonts));
    }
    return direction == PANGO_DIRECTION_RTL ? contexts().rightToLeft : contexts().leftToRight;
}

}  // namespace VexmoraSDK::platform
