pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The loading-failure view (tag 101002) of the reading surface: the current
// page (or the chapter) did not load. The retry button runs the indicator and
// asks again a second later (VORAComicViewManager::reloadCurrentPage).
Rectangle {
    id: root
    property VORAComicViewManager manager
    property string fontFamily
    readonly property bool retrying: manager !== null && manager.loadingFailLoading
    readonly property int tag: 101002

    width: 320
    height: 200
    radius: Theme.radiusPanel
    color: Theme.barBackground // opaque: the page's own placeholder lies underneath
    border.color: Theme.lineOnDark

    Column {
        anchors.centerIn: parent
        spacing: 16

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 48; height: 48
            // A broken page.
            Rectangle {
                visible: !root.retrying
                anchors.centerIn: parent
                width: 34; height: 44; radius: 4
                color: "transparent"
                border.color: Theme.accentOnDark
                border.width: 3
                Rectangle {
                    anchors.centerIn: parent
                    width: 44; height: 3
                    rotation: -35
                    color: Theme.accentOnDark
                }
            }
            Item {
                visible: root.retrying
                anchors.fill: parent
                Repeater {
                    model: 8
                    delegate: Rectangle {
                        id: dot
                        required property int index
                        x: 24 + 16 * Math.cos(dot.index * Math.PI / 4) - 4
                        y: 24 + 16 * Math.sin(dot.index * Math.PI / 4) - 4
                        width: 8; height: 8; radius: 4
                        color: Theme.iconOnDark
                        opacity: 0.25 + dot.index / 10
                    }
                }
                RotationAnimator on rotation { from: 0; to: 360; duration: 1000; loops: Animation.Infinite; running: root.retrying && root.visible }
            }
        }

        Text {
            objectName: "readerLoadingFailText"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.retrying ? "正在重新加载…" : "加载失败，请检查网络"
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTitle
        }

        Rectangle {
            objectName: "readerRetry"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 132; height: 40; radius: 20
            opacity: root.retrying ? 0.5 : 1
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: retryArea.pressed ? Theme.accentPressed : Theme.accent }
                GradientStop { position: 1; color: Theme.accentGradientEnd }
            }
            Text {
                anchors.centerIn: parent
                text: "重新加载"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontLarge
                font.bold: true
            }
            MouseArea {
                id: retryArea
                anchors.fill: parent
                enabled: !root.retrying
                onClicked: root.manager.reloadCurrentPage()
            }
        }
    }
}
