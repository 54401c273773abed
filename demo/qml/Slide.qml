// SPDX-License-Identifier: MIT
import QtQuick

/// Moves a page from one side of its place to another. It does not fade, because without a graphics
/// processor Qt may leave a page that has faded in a little too faint.
Transition {
    property alias from: slide.from
    property alias to: slide.to

    NumberAnimation {
        id: slide
        property: "x"
        from: 0
        to: 0
        duration: 200
        easing.type: Easing.OutCubic
    }
}
