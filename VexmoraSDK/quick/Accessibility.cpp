#include "VexmoraSDK/quick/Accessibility.h"

#include <QtQml/qqml.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QMetaType>

namespace VexmoraSDK {

QObject* makeAccessible(QQuickItem* item, QAccessible::Role role, const QString& name) {
    const auto* type = QMetaType::fromName("QQuickAccessibleAttached*").metaObject();
    const auto attach = type ? qmlAttachedPropertiesFunction(nullptr, type) : nullptr;
    if (!attach) return nullptr;
    auto* const accessible = qmlAttachedPropertiesObject(item, attach);
    accessible->setProperty("role", role);
    accessible->setProperty("name", name);
    return accessible;
}

QString translated(const std::string& word) {
    return QCoreApplication::translate("VexmoraSDK", word.c_str());
}

}  // namespace VexmoraSDK
