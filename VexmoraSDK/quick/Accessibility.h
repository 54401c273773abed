#pragma once

#include <QtCore/QString>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickItem>
#include <string>

namespace VexmoraSDK {

/// Makes an item known to screen readers, as QML's `Accessible` does, and returns what that type
/// attaches to the item. Works for items made in C++ too, but Qt keeps these properties where only
/// the types of its QML module reach them: absent, and nothing done, unless a QML engine of the
/// process has imported QtQuick.
QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name);

/// A word of the library in the language of the translators that the app has installed.
QString translated(const std::string& word);

}  // namespace VexmoraSDK
