// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Window
import VexmoraSDK

// A native ad between the rows of a page.
Window {
    width: 360
    height: 480
    visible: true
    title: "Native"

    component Headline: Text {
        font.pixelSize: 20
    }

    Column {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 16

        Headline { text: "Ferry back in service" }
        Headline { text: "Bakery reopens on the quay" }
        VexmoraAdView {
            containerId: "article-native"
            adType: Vexmora.AdType.Native
            onDidReceiveAd: console.log("didReceiveAd")
            onDidHaveError: (code, description) => console.log("didHaveError", code, description)
            onWillLeaveApplication: url => console.log("willLeaveApplication", url)
        }
        Headline { text: "Tram line to grow" }
    }
}
