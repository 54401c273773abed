// SPDX-License-Identifier: MIT
import QtQuick

/// One article of the paper.
QtObject {
    required property string section
    required property string title
    required property string summary
    required property string author
    required property int minutes
    required property url picture
    required property string caption
    /// Paragraphs separated by empty lines.
    required property string body

    readonly property string byline: author + " · " + minutes + " min read"
}
