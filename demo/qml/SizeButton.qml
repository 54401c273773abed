// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// A third of the size selector.
AbstractButton {
    id: root

    required property string size

    objectName: "size " + size
    width: parent.width / 3
    height: parent.height
    text: size.replace("x", " × ")

    background: Rectangle {
        radius: 6
        color: root.checked ? Theme.sheetText : "transparent"
    }

    contentItem: Label {
        text: root.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: root.checked ? Theme.sheet : Theme.sheetMuted
        font.pixelSize: 13
        font.bold: root.checked
    }
}
