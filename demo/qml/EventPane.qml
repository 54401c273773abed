// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// The events of the ads, the latest on top.
ListView {
    id: root

    required property EventLog events

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    model: events

    delegate: Item {
        id: entry

        required property string time
        required property string name
        required property string details

        width: ListView.view.width
        height: words.height + 8

        Label {
            id: clock
            y: 4
            text: entry.time
            color: Theme.sheetMuted
            font.family: Theme.mono
            font.pixelSize: 12
        }

        Column {
            id: words
            anchors.left: clock.right
            anchors.leftMargin: 12
            anchors.right: parent.right
            y: 3

            Label {
                text: entry.name
                color: entry.name === "didReceiveAd" ? Theme.good
                     : entry.name === "didHaveError" ? Theme.bad : Theme.info
                font.pixelSize: 13
                font.bold: true
            }

            Label {
                width: parent.width
                visible: text
                text: entry.details
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                color: Theme.sheetText
                font.pixelSize: 12
            }
        }
    }

    // What goes on below fades away.
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 24
        visible: !root.atYEnd
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.alpha(Theme.sheet, 0)
            }
            GradientStop {
                position: 1
                color: Theme.sheet
            }
        }
    }

    Label {
        anchors.centerIn: parent
        visible: root.count === 0
        text: "Nothing heard yet"
        color: Theme.sheetMuted
        font.pixelSize: 12
    }
}
