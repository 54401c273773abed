// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// Turns the page from day to night and back: a moon by day, a sun by night.
AbstractButton {
    id: root

    objectName: "appearance"
    implicitWidth: 48
    implicitHeight: 48
    Accessible.name: Theme.dark ? "Light appearance" : "Dark appearance"
    onClicked: Theme.dark = !Theme.dark

    contentItem: Item {
        Rectangle {
            anchors.centerIn: parent
            width: 18
            height: 18
            radius: 9
            color: Theme.ink

            Rectangle {
                x: 6
                y: -3
                visible: !Theme.dark
                width: 16
                height: 16
                radius: 8
                color: Theme.paper
            }
        }
    }
}
