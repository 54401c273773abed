// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Font.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>
#include <vector>

#include "VexmoraSDK/platform/cairo/FontImpl.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK::platform {
namespace {

std::string stringOf(FcPattern* font, const char* object, int index = 0) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(font, object, index, &value) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(value);
}

// HarfBuzz, which Pango uses, reads no other formats.
bool isUsable(FcPattern* font) {
    const auto format = stringOf(font, FC_FONTFORMAT);
    return format == "TrueType" || format == "CFF";
}

using FontSet = std::vector<PatternPointer>;

// Fontconfig's matching is no use here: it finds some family for any name.
FontSet installedFonts(const std::string& family) {
    const PatternPointer pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    const ObjectSetPointer objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_WEIGHT, FC_SLANT,
                                                    FC_WIDTH, FC_FONTFORMAT, nullptr));
    const FontSetPointer found(FcFontList(nullptr, pattern.get(), objects.get()));
    FontSet fonts;
    for (int i = 0; found && i < found->nfont; ++i) {
        if (!isUsable(found->fonts[i])) continue;
        FcPatternReference(found->fonts[i]);
        fonts.emplace_back(found->fonts[i]);
    }
    return fonts;
}

struct Family {
    std::string name;
    FontSet fonts;
};

// The installed family of this name, or an installed substitute.
std::optional<Family> installedFamily(const std::string& name) {
    if (name.empty()) return std::nullopt;
    if (auto fonts = installedFonts(name); !fonts.empty()) return Family{name, std::move(fonts)};
    if (g_ascii_strcasecmp(name.c_str(), "Helvetica") != 0) return std::nullopt;
    for (const auto* alias : {"Nimbus Sans", "Liberation Sans", "Arial"}) {
        if (auto fonts = installedFonts(alias); !fonts.empty())
            return Family{alias, std::move(fonts)};
    }
    return std::nullopt;
}

// Makes "Bold Oblique" and "BoldItalic" the same style.
std::string comparable(std::string style) {
    std::erase(style, ' ');
    std::ranges::transform(style, style.begin(), g_ascii_tolower);
    constexpr std::string_view kOblique = "oblique";
    if (const auto at = style.find(kOblique); at != std::string::npos)
        style.replace(at, kOblique.size(), "italic");
    return style;
}

/// The family's own name for a style, and its font.
struct Style {
    std::string name;
    FcPattern* font;
};

std::optional<Style> installedStyle(const Family& family, const std::string& style) {
    const auto wanted = comparable(style);
    for (const auto& font : family.fonts) {
        for (int i = 0;; ++i) {
            auto installed = stringOf(font.get(), FC_STYLE, i);
            if (installed.empty()) break;
            if (comparable(installed) == wanted) return Style{std::move(installed), font.get()};
        }
    }
    return std::nullopt;
}

struct FamilyAndStyle {
    std::string family;
    std::string style;
};

std::optional<FamilyAndStyle> installed(const std::string& name) {
    if (const auto family = installedFamily(name)) return FamilyAndStyle{family->name, ""};
    const auto dash = name.rfind('-');
    if (dash == std::string::npos) return std::nullopt;
    const auto family = installedFamily(name.substr(0, dash));
    if (!family) return std::nullopt;
    auto style = installedStyle(*family, name.substr(dash + 1));
    if (!style) return std::nullopt;
    return FamilyAndStyle{family->name, std::move(style->name)};
}

std::string systemFamily() {
    const PatternPointer pattern(FcNameParse(reinterpret_cast<const FcChar8*>("sans-serif")));
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const FontSetPointer sorted(FcFontSort(nullptr, pattern.get(), FcTrue, nullptr, &result));
    for (int i = 0; sorted && i < sorted->nfont; ++i) {
        if (isUsable(sorted->fonts[i])) return stringOf(sorted->fonts[i], FC_FAMILY);
    }
    return "sans-serif";
}

FontDescriptionPointer describe(const Font& font) {
    FontDescriptionPointer description(pango_font_description_new());
    if (!font.style().empty()) {
        const Family family{font.family(), installedFonts(font.family())};
        if (const auto style = installedStyle(family, font.style()))
            description.reset(pango_fc_font_description_from_pattern(style->font, FALSE));
    }
    pango_font_description_set_family(description.get(), font.family().c_str());
    return description;
}

/// Caches fontconfig's results until the host's fonts change: a query takes longer than drawing an
/// ad.
class Answers {
 public:
    std::optional<FamilyAndStyle> named(const std::string& name) {
        const std::lock_guard lock(mutex_);
        forgetOutdated();
        if (const auto known = named_.find(name); known != named_.end()) return known->second;
        auto found = installed(name);
        if (named_.size() < kMaxNames) named_.emplace(name, found);
        return found;
    }

    FontDescriptionPointer described(const Font& font) {
        const std::lock_guard lock(mutex_);
        forgetOutdated();
        auto& description = descriptions_[{font.family(), font.style()}];
        if (!description) description = describe(font);
        FontDescriptionPointer copy(pango_font_description_copy(description.get()));
        if (descriptions_.size() > kMaxNames) descriptions_.clear();
        return copy;
    }

    std::string system() {
        const std::lock_guard lock(mutex_);
        forgetOutdated();
        if (system_.empty()) system_ = systemFamily();
        return system_;
    }

 private:
    /// More fonts than an app uses.
    static constexpr std::size_t kMaxNames = 256;

    void forgetOutdated() {
        const auto version = fontsVersion();
        if (version == version_) return;
        version_ = version;
        named_.clear();
        descriptions_.clear();
        system_.clear();
    }

    std::mutex mutex_;
    FontsVersion version_;
    std::map<std::string, std::optional<FamilyAndStyle>> named_;
    /// Keyed by family and style, without a size.
    std::map<std::pair<std::string, std::string>, FontDescriptionPointer> descriptions_;
    std::string system_;
};

Answers& answers() {
    static NoDestructor<Answers> answers;
    return *answers;
}

}  // namespace

std::optional<Font> Font::named(std::string_view name, double size) {
    const auto found = answers().named(std::string(name));
    if (!found) return std::nullopt;
    return Font(found->family, found->style, size);
}

Font Font::system(double size) {
    return Font(answers().system(), "", size);
}

FontDescriptionPointer pangoFont(const Font& font) {
    auto description = answers().described(font);
    // Points are device independent pixels here, rounded to whole ones on every backend.
    const double pixels = std::max(1.0, std::round(font.size()));
    pango_font_description_set_absolute_size(description.get(), pixels * PANGO_SCALE);
    return description;
}

FontsVersion fontsVersion() {
    FcConfig* const config = FcConfigGetCurrent();
    const FcFontSet* const added = FcConfigGetFonts(config, FcSetApplication);
    return {config, added ? added->nfont : 0};
}

}  // namespace VexmoraSDK::platform
