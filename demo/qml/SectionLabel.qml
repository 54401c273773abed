// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// The name of a section, above a headline.
Label {
    color: Theme.accent
    font.family: Theme.sans
    font.pixelSize: 11
    font.bold: true
    font.letterSpacing: 1
    font.capitalization: Font.AllUppercase
}
