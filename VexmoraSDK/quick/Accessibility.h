// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtGui/QAccessible>
#include <QtQuick/QQuickItem>
#include <string>

namespace VexmoraSDK {

/// The slot, such as "press()", that a screen reader's press on an item calls; none without a
/// receiver.
struct PressSlot {
    QObject* receiver = nullptr;
    const char* slot = nullptr;
};

/// Makes an item known to screen readers, as QML's `Accessible` does, and returns the object that
/// `Accessible` attaches to it. Another call changes role and name. Works for items made in C++
/// too. Returns null and does nothing unless a QML engine of the process has imported QtQuick.
QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name,
                        PressSlot press = {});

/// Translates a text of the library with the translators that the app has installed.
QString translated(const std::string& word);

}  // namespace VexmoraSDK
