// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/AttachedProperties.h"

#include <QtQml/qqml.h>
#include <QtCore/QMetaProperty>
#include <QtCore/QMetaType>
#include <QtCore/QVariant>

namespace VexmoraSDK {
namespace {

/// What attaches the properties; absent before QtQuick was imported.
QQmlAttachedPropertiesFunc attachFunction(AttachedType type) {
    static QQmlAttachedPropertiesFunc found[2] = {};
    auto& function = found[static_cast<int>(type)];
    if (function) return function;
    const auto* meta =
        QMetaType::fromName(type == AttachedType::accessible ? "QQuickAccessibleAttached*"
                                                             : "QQuickLayoutMirroringAttached*")
            .metaObject();
    if (meta) function = qmlAttachedPropertiesFunction(nullptr, meta);
    return function;
}

}  // namespace

QObject* attachedProperties(QQuickItem* item, AttachedType type, IfMissing ifMissing) {
    const auto attach = attachFunction(type);
    if (!attach) return nullptr;
    return qmlAttachedPropertiesObject(item, attach, ifMissing == IfMissing::attach);
}

bool isMirrored(QQuickItem* item) {
    const auto* mirroring =
        attachedProperties(item, AttachedType::layoutMirroring, IfMissing::leave);
    return mirroring && mirroring->property("enabled").toBool();
}

void followMirroring(QQuickItem* item, const QMetaMethod& slot) {
    auto* mirroring = attachedProperties(item, AttachedType::layoutMirroring, IfMissing::attach);
    if (!mirroring) return;
    const auto property =
        mirroring->metaObject()->property(mirroring->metaObject()->indexOfProperty("enabled"));
    QObject::connect(mirroring, property.notifySignal(), item, slot,
                     Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

}  // namespace VexmoraSDK
