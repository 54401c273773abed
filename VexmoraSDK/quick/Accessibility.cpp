// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/Accessibility.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <utility>

#include "VexmoraSDK/quick/AttachedProperties.h"

namespace VexmoraSDK {

QObject* AccessibleItem::update(QQuickItem* item, QAccessible::Role role, const QString& name,
                                bool ignored, PressSlot press) {
    auto* const attached = attachedProperties(item, AttachedType::accessible, IfMissing::attach);
    if (!attached) return nullptr;
    // Every ad sets these, so their names are looked up once.
    static const auto property = [meta = attached->metaObject()](const char* called) {
        return meta->property(meta->indexOfProperty(called));
    };
    static const auto roleProperty = property("role");
    static const auto nameProperty = property("name");
    static const auto ignoredProperty = property("ignored");
    if (!std::exchange(isKnown_, true)) {
        if (roleProperty.read(attached).toInt() == QAccessible::NoRole)
            roleProperty.write(attached, role);
        if (press.receiver) {
            const auto* meta = attached->metaObject();
            const auto* receiver = press.receiver->metaObject();
            QObject::connect(attached, meta->method(meta->indexOfSignal("pressAction()")),
                             press.receiver, receiver->method(receiver->indexOfSlot(press.slot)));
        }
    }
    if (name != name_ && nameProperty.read(attached).toString() == name_)
        nameProperty.write(attached, name_ = name);
    if (ignored != ignored_ && ignoredProperty.read(attached).toBool() == ignored_)
        ignoredProperty.write(attached, ignored_ = ignored);
    return attached;
}

QString translated(const std::string& word) {
    return QCoreApplication::translate("VexmoraSDK", word.c_str());
}

}  // namespace VexmoraSDK
