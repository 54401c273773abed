// SPDX-License-Identifier: MIT
import QtQuick
import VexmoraSDK

VexmoraAdView {
    id: page
    property string address
    signal ready
    containerId: "bench"
    onDidReceiveAd: page.ready()
}
