#include "VexmoraSDK/platform/Font.h"

#include <QtCore/QStringList>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>

namespace VexmoraSDK::platform {
namespace {

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The installed family of that name or one that stands in for it. Qt's own matching is not asked:
// it answers any name with some family.
std::optional<QString> installedFamily(const QString& family) {
    if (QFontDatabase::hasFamily(family)) return family;
    if (family.compare(QLatin1String("Helvetica"), Qt::CaseInsensitive) == 0) {
        for (const auto alias : {"Nimbus Sans", "Liberation Sans", "Arial"}) {
            if (QFontDatabase::hasFamily(QLatin1String(alias))) return QLatin1String(alias);
        }
    }
    return std::nullopt;
}

// "Bold Oblique" and "BoldItalic" are the same style.
QString comparable(QString style) {
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

}  // namespace

std::optional<Font> Font::named(std::string_view name, double size) {
    const auto whole = textOf(name);
    if (const auto family = installedFamily(whole)) return Font(family->toStdString(), "", size);

    const auto dash = whole.lastIndexOf(QLatin1Char('-'));
    if (dash < 0) return std::nullopt;
    const auto family = installedFamily(whole.left(dash));
    if (!family) return std::nullopt;
    const auto style = installedStyle(*family, whole.mid(dash + 1));
    if (!style) return std::nullopt;
    return Font(family->toStdString(), style->toStdString(), size);
}

Font Font::system(double size) {
    const QFontInfo general(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    return Font(general.family().toStdString(), "", size);
}

}  // namespace VexmoraSDK::platform
