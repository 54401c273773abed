// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/Accessibility.h"

#include <QtQml/qqml.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QMetaType>

namespace VexmoraSDK {

namespace {

/// What attaches the properties; absent before QtQuick was imported.
QQmlAttachedPropertiesFunc attachFunction() {
    static QQmlAttachedPropertiesFunc found = nullptr;
    if (found) return found;
    const auto* type = QMetaType::fromName("QQuickAccessibleAttached*").metaObject();
    if (type) found = qmlAttachedPropertiesFunction(nullptr, type);
    return found;
}

}  // namespace

QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name,
                        PressSlot press) {
    const auto attach = attachFunction();
    if (!attach) return nullptr;
    auto* accessible = qmlAttachedPropertiesObject(item, attach, false);
    if (!accessible) {
        accessible = qmlAttachedPropertiesObject(item, attach);
        if (press.receiver)
            QObject::connect(accessible, SIGNAL(pressAction()), press.receiver, press.slot);
    }
    accessible->setProperty("role", role);
    accessible->setProperty("name", name);
    return accessible;
}

QString translated(const std::string& word) {
    return QCoreApplication::translate("VexmoraSDK", word.c_str());
}

}  // namespace VexmoraSDK
