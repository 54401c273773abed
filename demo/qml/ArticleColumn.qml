// SPDX-License-Identifier: MIT
import QtQuick

/// Articles one above the other, one of which may be chosen.
Column {
    signal chosen(article: Article)
}
