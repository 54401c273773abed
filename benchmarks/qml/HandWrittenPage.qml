// SPDX-License-Identifier: MIT
import QtQuick

Item {
    id: page
    property string address
    property int adType
    property var ad: null
    signal ready

    implicitWidth: adType === 1 ? 323 : picture.implicitWidth
    implicitHeight: adType === 1 ? Math.max(99, texts.height) : picture.implicitHeight

    Image {
        id: picture
        source: page.ad ? page.ad.bannerUrl : ""
        asynchronous: true
        cache: false
        fillMode: Image.PreserveAspectFit
        width: page.adType === 1 ? 132 : implicitWidth
        height: page.adType === 1 ? 99 : implicitHeight
        onStatusChanged: if (status === Image.Ready) page.ready()
    }
    Loader {
        id: texts
        x: 140
        active: page.adType === 1 && page.ad !== null
        sourceComponent: Column {
            width: 178
            Text { width: 178; wrapMode: Text.Wrap; font { family: "Nimbus Sans"; pixelSize: 13; bold: true } text: page.ad.title }
            Text { width: 178; wrapMode: Text.Wrap; font { family: "Nimbus Sans"; pixelSize: 12 } text: page.ad.description }
            Text { width: 178; wrapMode: Text.Wrap; color: "gray"; font { family: "Nimbus Sans"; pixelSize: 12 } text: page.ad.displayName }
        }
    }
    TapHandler { onTapped: Qt.openUrlExternally(page.ad.clickUrl) }
    Component.onCompleted: {
        const request = new XMLHttpRequest()
        request.onreadystatechange = () => {
            if (request.readyState === XMLHttpRequest.DONE)
                page.ad = JSON.parse(request.responseText)[0]
        }
        request.open("GET", page.address)
        request.send()
    }
}
