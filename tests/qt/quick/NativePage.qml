// SPDX-License-Identifier: MIT
import QtQuick
import VexmoraSDK

// A page that lays out a native ad with items of its own.
Rectangle {
    id: card

    property alias ad: ad

    width: 380
    height: 120
    color: "black"

    VexmoraAd {
        id: ad

        containerId: "home"
        viewType: Vexmora.ViewType.Native
        refreshInterval: 30
        timeout: 20
        item: card
    }
    VexmoraAdPicture {
        id: picture

        ad: ad
        fillMode: Vexmora.FillMode.Fit
        width: 160
        height: 120
    }
    Text {
        id: title

        anchors.left: picture.right
        text: ad.title
        color: "white"
        visible: ad.status === Vexmora.Status.Ready
    }
    Text {
        anchors.left: picture.right
        anchors.top: title.bottom
        text: ad.description + " " + ad.displayName
        color: "white"
    }
    TapHandler {
        onTapped: ad.open()
    }
}
