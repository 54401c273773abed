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

/// What screen readers know of an item, like QML's `Accessible`. What the page sets itself stays.
class AccessibleItem {
 public:
    /// Sets role and name, and whether the item is ignored; returns the object that `Accessible`
    /// attaches to it. Works for items made in C++ too. Returns null and does nothing unless a QML
    /// engine of the process has imported QtQuick.
    QObject* update(QQuickItem* item, QAccessible::Role role, const QString& name, bool ignored,
                    PressSlot press = {});

 private:
    bool isKnown_ = false;
    QString name_;
    bool ignored_ = false;
};

/// Translates a text of the library with the translators that the app has installed.
QString translated(const std::string& word);

}  // namespace VexmoraSDK
