// SPDX-License-Identifier: MIT
import QtQuick

/// A picture that fills its rectangle, corners rounded. The corners are covered with the colour of
/// the ground, which every renderer can draw.
Item {
    id: root

    property alias source: picture.source
    property int radius: 8
    property color ground: Theme.paper

    clip: true

    Image {
        id: picture
        anchors.fill: parent
        fillMode: Image.PreserveAspectCrop
        smooth: true
        mipmap: true
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -root.radius
        radius: 2 * root.radius
        color: "transparent"
        border.width: root.radius
        border.color: root.ground
    }
}
