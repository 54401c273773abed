// SPDX-License-Identifier: MIT
import QtQuick

/// One of the banner sizes, chosen.
Rectangle {
    id: root

    property string size: "320x60"

    implicitHeight: 34
    radius: 8
    color: Theme.sheetRaised

    Row {
        anchors.fill: parent
        anchors.margins: 3

        SizeButton {
            size: "320x60"
            checked: root.size === size
            onClicked: root.size = size
        }

        SizeButton {
            size: "320x100"
            checked: root.size === size
            onClicked: root.size = size
        }

        SizeButton {
            size: "468x60"
            checked: root.size === size
            onClicked: root.size = size
        }
    }
}
