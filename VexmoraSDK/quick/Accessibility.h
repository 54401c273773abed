// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickItem>
#include <string>

namespace VexmoraSDK {

/// What a screen reader's press on an item calls, such as "press()"; none where there is no
/// receiver.
struct PressSlot {
    QObject* receiver = nullptr;
    const char* slot = nullptr;
};

/// Makes an item known to screen readers, as QML's `Accessible` does, and returns what that type
/// attaches to the item. Called again, it changes the role and the name. Works for items made in
/// C++ too; absent, and nothing done, unless a QML engine of the process has imported QtQuick.
QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name,
                        PressSlot press = {});

/// A word of the library in the language of the translators that the app has installed.
QString translated(const std::string& word);

}  // namespace VexmoraSDK
