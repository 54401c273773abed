import QtQuick
import QtQuick.Controls.Material

/// One of the banner sizes, chosen.
Rectangle {
    id: root

    property string size: sizes[0]

    readonly property list<string> sizes: ["320x60", "320x100", "468x60"]

    implicitHeight: 36
    radius: 8
    color: Theme.sheetRaised

    Row {
        anchors.fill: parent
        anchors.margins: 3

        Repeater {
            model: root.sizes

            AbstractButton {
                id: segment

                required property string modelData

                objectName: "size " + modelData
                width: parent.width / root.sizes.length
                height: parent.height
                checked: root.size === modelData
                text: modelData.replace("x", " × ")
                onClicked: root.size = modelData

                background: Rectangle {
                    radius: 6
                    color: segment.checked ? Theme.sheetText : "transparent"
                }

                contentItem: Label {
                    text: segment.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    color: segment.checked ? Theme.sheet : Theme.sheetMuted
                    font.pixelSize: 13
                    font.bold: segment.checked
                }
            }
        }
    }
}
