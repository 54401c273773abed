// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// The paper's own ad, for when there is no other.
Rectangle {
    color: Theme.paper
    border.color: Theme.line
    radius: 4

    Column {
        anchors.centerIn: parent
        spacing: 2

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Printed on the quay since 1887"
            color: Theme.ink
            font.family: Theme.serif
            font.pixelSize: 16
            font.italic: true
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Thank you for reading The Harbour Post."
            color: Theme.muted
            font.pixelSize: 11
        }
    }
}
