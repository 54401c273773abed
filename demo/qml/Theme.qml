// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

/// Colours, type and measures of the paper.
QtObject {
    property bool dark: false

    readonly property color paper: dark ? "#15191e" : "#fbf8f3"
    readonly property color ink: dark ? "#ece7de" : "#1b2733"
    readonly property color muted: dark ? "#98a2ac" : "#66717c"
    readonly property color line: dark ? "#2e353d" : "#e4ddd1"
    readonly property color accent: dark ? "#ff8b7e" : "#b93a31"
    readonly property color adGround: dark ? "#20262d" : "#f1ebe0"

    readonly property color sheet: "#12263a"
    readonly property color sheetRaised: "#1e3a54"
    readonly property color sheetText: "#eef3f7"
    readonly property color sheetMuted: "#9db2c4"
    readonly property color good: "#6fd3a0"
    readonly property color bad: "#ff9d84"
    readonly property color info: "#ffd27a"

    readonly property string serif: "Liberation Serif"
    readonly property string sans: "Liberation Sans"
    readonly property string mono: "Liberation Mono"

    readonly property int margin: 16

    /// A whole number of points near a length. It is even, which is a whole number of pixels on
    /// screens of one and a half pixels a point too: edges stay sharp.
    function whole(length: real): real {
        return 2 * Math.round(length / 2);
    }
}
