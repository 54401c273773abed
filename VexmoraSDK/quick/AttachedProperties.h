// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMetaMethod>
#include <QtQuick/QQuickItem>

namespace VexmoraSDK {

/// A type of QtQuick's QML module that attaches properties to items.
enum class AttachedType { accessible, layoutMirroring };

enum class IfMissing { attach, leave };

/// The object that a type attaches to an item. Qt exposes it to QML only: it is null unless an
/// engine of the process has imported QtQuick, and if it is missing and `ifMissing` does not create
/// it.
QObject* attachedProperties(QQuickItem* item, AttachedType type, IfMissing ifMissing);

/// Calls a slot of the item whenever `LayoutMirroring` is enabled or disabled for it.
void followMirroring(QQuickItem* item, const QMetaMethod& slot);
/// Whether `LayoutMirroring` is enabled for an item that follows it.
bool isMirrored(QQuickItem* item);

}  // namespace VexmoraSDK
