// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Window
import VexmoraSDK

// An interstitial ad, fetched in advance and presented between two pages.
Window {
    id: window

    property int page: 1

    width: 360
    height: 560
    visible: true
    title: "Interstitial"

    Text {
        anchors.centerIn: parent
        text: "Page " + window.page + "\n\nTap for the next"
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 24
    }

    TapHandler {
        onTapped: {
            window.page += 1;
            if (!screen.present(ad) && ad.status !== Vexmora.Status.Loading)
                ad.reload();
        }
    }

    VexmoraAdView {
        id: ad

        anchors.fill: parent
        containerId: "between-articles"
        adSize: "300x250"
        onDidHaveError: (code, description) => console.log("didHaveError", code, description)
        onWillDismissScreen: console.log("willDismissScreen")
        onDidDismissScreen: ad.reload()
    }

    VexmoraScreen {
        id: screen

        anchors.fill: parent
    }
}
