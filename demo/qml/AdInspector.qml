// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// A sheet for developers: the size of the banner, and the events of all ads. A tap on its title
/// unfolds it.
Rectangle {
    id: root

    required property EventLog events

    property alias adSize: selector.size
    property bool open: false

    implicitHeight: open ? 204 : title.height
    color: Theme.sheet

    AbstractButton {
        id: title
        objectName: "inspector"
        width: parent.width
        height: 36
        text: "Ad events"
        onClicked: root.open = !root.open

        contentItem: Item {
            Label {
                x: Theme.margin
                anchors.verticalCenter: parent.verticalCenter
                text: title.text
                color: Theme.sheetText
                font.pixelSize: 14
                font.bold: true
            }

            Image {
                anchors.right: parent.right
                anchors.rightMargin: Theme.margin
                anchors.verticalCenter: parent.verticalCenter
                width: 24
                height: 24
                source: "icons/chevron.png"
                mipmap: true
                rotation: root.open ? 0 : 180
            }
        }
    }

    SizeSelector {
        id: selector
        anchors.top: title.bottom
        x: Theme.margin
        width: parent.width - 2 * Theme.margin
        visible: root.open
    }

    EventPane {
        anchors.top: selector.bottom
        anchors.topMargin: 6
        anchors.bottom: parent.bottom
        x: Theme.margin
        width: parent.width - 2 * Theme.margin
        visible: root.open
        events: root.events
    }
}
