// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// The head of every page: the paper's name, or the way back to the front page.
Rectangle {
    id: root

    required property string title
    required property bool canGoBack

    signal back

    implicitHeight: 56
    color: Theme.paper

    ToolButton {
        objectName: "back"
        x: 4
        anchors.verticalCenter: parent.verticalCenter
        visible: root.canGoBack
        icon.source: "icons/back.png"
        icon.color: Theme.ink
        Accessible.name: "Back to the front page"
        onClicked: root.back()
    }

    AppearanceButton {
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
    }

    Column {
        anchors.centerIn: parent

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.title
            color: Theme.ink
            font.family: Theme.serif
            font.pixelSize: root.canGoBack ? 20 : 24
            font.bold: true
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: !root.canGoBack
            text: "Morning edition · High water 06:12 and 18:40"
            color: Theme.muted
            font.pixelSize: 10
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
}
