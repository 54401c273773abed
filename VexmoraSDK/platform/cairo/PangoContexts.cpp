#include "VexmoraSDK/platform/cairo/PangoContexts.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <thread>

#include "VexmoraSDK/platform/cairo/FontFinder.h"
#include "VexmoraSDK/platform/cairo/FontImpl.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/foundation/WorkerThread.h"

namespace VexmoraSDK::platform {
namespace {

PangoContext* makeContext(PangoFontMap* fonts, PangoDirection direction) {
    PangoContext* context = pango_font_map_create_context(fonts);
    pango_context_set_base_dir(context, direction);
    // A text has the same width whatever the scale of the screen, and with it the same lines.
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

/// Finds the fonts of ads and those that stand in for them where they lack a letter.
void findFonts() {
    const auto title = Font::named("Helvetica-Bold", 13);
    const auto text = Font::named("Helvetica", 12);
    for (const auto& font : {title, text, std::optional(Font::system(12))}) {
        if (!font) continue;
        const LayoutPointer layout(pango_layout_new(contexts().leftToRight));
        pango_layout_set_font_description(layout.get(), pangoFont(*font).get());
        pango_layout_set_text(layout.get(), "Ad ☕", -1);
        pango_layout_get_line_count(layout.get());
    }
}

/// Runs `findFonts`. Main thread, as the last of the contexts' users.
std::thread& fontFinder() {
    static NoDestructor<std::thread> thread;
    return *thread;
}

}  // namespace

void findFontsInBackground() {
    static const bool started = [] {
        fontFinder() = startWorkerThread("vexmora-fonts", findFonts);
        return true;
    }();
    static_cast<void>(started);
}

PangoContext* PangoContexts::forDirection(PangoDirection direction) {
    if (fontFinder().joinable()) fontFinder().join();
    if (const auto version = fontsVersion(); version != contexts().version) {
        contexts().version = version;
        pango_fc_font_map_config_changed(PANGO_FC_FONT_MAP(contexts().fonts));
    }
    return direction == PANGO_DIRECTION_RTL ? contexts().rightToLeft : contexts().leftToRight;
}

}  // namespace VexmoraSDK::platform
