// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/AttachedProperties.h"

#include <QtQml/qqml.h>
#include <QtCore/QMetaType>
#include <QtCore/QVariant>

namespace VexmoraSDK {
namespace {

constexpr auto kLayoutMirroring = "QQuickLayoutMirroringAttached";

}  // namespace

QObject* attachedProperties(QQuickItem* item, const char* className, IfMissing ifMissing) {
    const auto* type = QMetaType::fromName(QByteArray(className) + '*').metaObject();
    const auto attach = type ? qmlAttachedPropertiesFunction(nullptr, type) : nullptr;
    if (!attach) return nullptr;
    return qmlAttachedPropertiesObject(item, attach, ifMissing == IfMissing::attach);
}

bool isMirrored(QQuickItem* item) {
    const auto* mirroring = attachedProperties(item, kLayoutMirroring, IfMissing::attach);
    return mirroring && mirroring->property("enabled").toBool();
}

void followMirroring(QQuickItem* item, const char* slot) {
    if (auto* mirroring = attachedProperties(item, kLayoutMirroring, IfMissing::attach)) {
        QObject::connect(mirroring, SIGNAL(enabledChanged()), item, slot,
                         Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
    }
}

}  // namespace VexmoraSDK
