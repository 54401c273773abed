// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/Accessibility.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>

#include "VexmoraSDK/quick/AttachedProperties.h"

namespace VexmoraSDK {

QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name,
                        PressSlot press) {
    auto* accessible = attachedProperties(item, AttachedType::accessible, IfMissing::leave);
    if (!accessible) {
        accessible = attachedProperties(item, AttachedType::accessible, IfMissing::attach);
        if (!accessible) return nullptr;
        if (press.receiver) {
            const auto* meta = accessible->metaObject();
            const auto* receiver = press.receiver->metaObject();
            QObject::connect(accessible, meta->method(meta->indexOfSignal("pressAction()")),
                             press.receiver, receiver->method(receiver->indexOfSlot(press.slot)));
        }
    }
    // Every ad sets these, so their names are looked up once.
    static const auto property = [meta = accessible->metaObject()](const char* called) {
        return meta->property(meta->indexOfProperty(called));
    };
    static const auto roleProperty = property("role");
    static const auto nameProperty = property("name");
    roleProperty.write(accessible, role);
    nameProperty.write(accessible, name);
    return accessible;
}

QString translated(const std::string& word) {
    return QCoreApplication::translate("VexmoraSDK", word.c_str());
}

}  // namespace VexmoraSDK
