// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/Accessibility.h"

#include <QtCore/QCoreApplication>

#include "VexmoraSDK/quick/AttachedProperties.h"

namespace VexmoraSDK {

QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name,
                        PressSlot press) {
    constexpr auto kAccessible = "QQuickAccessibleAttached";
    auto* accessible = attachedProperties(item, kAccessible, IfMissing::leave);
    if (!accessible) {
        accessible = attachedProperties(item, kAccessible, IfMissing::attach);
        if (!accessible) return nullptr;
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
