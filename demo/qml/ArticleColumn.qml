// SPDX-License-Identifier: MIT
import QtQuick

/// Articles one above the other, one of which may be chosen.
Column {
    /// Whether the second article comes after an ad.
    property bool hasAd: false

    signal chosen(article: Article)
}
