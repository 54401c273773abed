// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Window
import VexmoraSDK

// A dark page with a native ad that it lays out itself, and one in the library's layout.
Window {
    id: page

    width: 360
    height: 480
    visible: true
    title: "Own layout"
    color: "#15191e"

    VexmoraAd {
        id: ad

        containerId: "article-native"
        adType: Vexmora.AdType.Native
        refreshInterval: 30
        item: card
        onBecameViewable: console.log("becameViewable", ad.title)
    }

    Column {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 16

        Rectangle {
            id: card

            width: parent.width
            height: 120
            visible: ad.status === Vexmora.Status.Ready
            color: "#20262d"

            VexmoraAdPicture {
                x: 8
                y: 8
                width: 138
                height: 104
                ad: ad
                fillMode: Vexmora.FillMode.Fit
            }

            Text {
                x: 156
                y: 8
                width: parent.width - 164
                text: ad.title + "\n" + ad.displayName
                textFormat: Text.PlainText
                wrapMode: Text.WordWrap
                color: "#ece7de"
            }

            TapHandler {
                onTapped: ad.open()
            }
        }

        VexmoraAdView {
            containerId: "article-native"
            adType: Vexmora.AdType.Native
            textColor: "#ece7de"
            secondaryTextColor: "#98a2ac"
        }

        VexmoraAdView {
            width: parent.width
            height: implicitHeight * width / implicitWidth
            containerId: "home-bottom-2x"
            adSize: "320x60"
            fillMode: Vexmora.FillMode.Fit
        }
    }
}
