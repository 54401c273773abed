// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Font.h"

#include <QtCore/QStringList>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <algorithm>
#include <tuple>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/qt/FontImpl.h"
#include "VexmoraSDK/platform/qt/FontLookupCache.h"

namespace VexmoraSDK::platform {
namespace {

// The installed family of this name, or an installed substitute. Qt's matching is no use here: it
// finds some family for any name.
std::optional<QString> installedFamily(const QString& family) {
    if (QFontDatabase::hasFamily(family)) return family;
    if (family.compare(QLatin1String("Helvetica"), Qt::CaseInsensitive) == 0) {
        for (const auto alias : {"Nimbus Sans", "Liberation Sans", "Arial"}) {
            if (QFontDatabase::hasFamily(QLatin1String(alias))) return QLatin1String(alias);
        }
    }
    return std::nullopt;
}

// Makes "Bold Oblique" and "BoldItalic" the same style.
QString comparable(const QString& style) {
    return style.toLower()
        .remove(QLatin1Char(' '))
        .replace(QLatin1String("oblique"), QLatin1String("italic"));
}

std::optional<QString> installedStyle(const QString& family, const QString& style) {
    const auto wanted = comparable(style);
    for (const auto& installed : QFontDatabase::styles(family)) {
        if (comparable(installed) == wanted) return installed;
    }
    return std::nullopt;
}

struct FamilyAndStyle {
    std::string family;
    std::string style;
};

std::optional<FamilyAndStyle> installedFont(const std::string& name) {
    const auto whole = QString::fromStdString(name);
    if (const auto family = installedFamily(whole)) {
        return FamilyAndStyle{family->toStdString(), ""};
    }
    const auto dash = whole.lastIndexOf(QLatin1Char('-'));
    if (dash < 0) return std::nullopt;
    const auto family = installedFamily(whole.left(dash));
    if (!family) return std::nullopt;
    const auto style = installedStyle(*family, whole.mid(dash + 1));
    if (!style) return std::nullopt;
    return FamilyAndStyle{family->toStdString(), style->toStdString()};
}

QFont fontFromDatabase(const Font& font) {
    const auto family = QString::fromStdString(font.family());
    const auto style = QString::fromStdString(font.style());
    auto found = style.isEmpty() ? QFont(family) : QFontDatabase::font(family, style, 12);
    // Points are device independent pixels here, and the text engine takes only whole ones.
    found.setPixelSize(std::max(1, qRound(font.size())));
    // With hinting, widths and so line breaks would depend on the screen's scale.
    found.setHintingPreference(QFont::PreferNoHinting);
    return found;
}

}  // namespace

std::optional<Font> Font::named(std::string_view name, double size) {
    static NoDestructor<FontLookupCache<std::string, std::optional<FamilyAndStyle>>> cache;
    const std::string wanted(name);
    const auto found = cache->find(wanted, [&] { return installedFont(wanted); });
    if (!found) return std::nullopt;
    return Font(found->family, found->style, size);
}

QFont qtFont(const Font& font) {
    static NoDestructor<FontLookupCache<std::tuple<std::string, std::string, double>, QFont>> cache;
    return cache->find({font.family(), font.style(), font.size()},
                       [&] { return fontFromDatabase(font); });
}

Font Font::system(double size) {
    const QFontInfo general(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    return Font(general.family().toStdString(), "", size);
}

}  // namespace VexmoraSDK::platform
