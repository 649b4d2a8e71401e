import QtQuick
import Quorin

// The no-network panel (tag 8888) over the feed's grid, with its retry.
Rectangle {
    id: root
    property VORANetWorkNoLinking panel
    property string fontFamily

    visible: panel !== null && panel.visible
    color: Theme.surface
    radius: Theme.radiusPanel
    MouseArea { anchors.fill: parent } // the grid underneath takes no touches

    Column {
        anchors.centerIn: parent
        spacing: 18
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            source: "image://quorin/art/dcoverdefault.png"
            width: 120; height: 160
            opacity: 0.7
            asynchronous: true
        }
        Text {
            objectName: "noNetworkText"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.panel ? root.panel.text : ""
            color: Theme.textSecondary
            font.family: root.fontFamily
            font.pixelSize: Theme.fontHeading
        }
        Rectangle {
            objectName: "retryButton"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 160; height: 48
            radius: 24
            color: retryArea.pressed ? Theme.accentPressed : Theme.accent
            Text {
                anchors.centerIn: parent
                text: "刷新重试"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontTitle
                font.bold: true
            }
            MouseArea {
                id: retryArea
                anchors.fill: parent
                onClicked: root.panel.retry()
            }
        }
    }
}
