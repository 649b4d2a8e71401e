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
    radius: 18
    color: "#2E3047" // opaque: the page's own placeholder lies underneath
    border.color: "#33FFFFFF"

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
                border.color: "#FFB199"
                border.width: 3
                Rectangle {
                    anchors.centerIn: parent
                    width: 44; height: 3
                    rotation: -35
                    color: "#FFB199"
                }
            }
            Item {
                visible: root.retrying
                anchors.fill: parent
                Repeater {
                    model: 8
                    delegate: Rectangle {
                        x: 24 + 16 * Math.cos(index * Math.PI / 4) - 4
                        y: 24 + 16 * Math.sin(index * Math.PI / 4) - 4
                        width: 8; height: 8; radius: 4
                        color: "white"
                        opacity: 0.25 + index / 10
                    }
                }
                RotationAnimator on rotation { from: 0; to: 360; duration: 1000; loops: Animation.Infinite; running: root.retrying && root.visible }
            }
        }

        Text {
            objectName: "readerLoadingFailText"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.retrying ? "正在重新加载…" : "加载失败，请检查网络"
            color: "white"
            font.family: root.fontFamily
            font.pixelSize: 17
        }

        Rectangle {
            objectName: "readerRetry"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 132; height: 40; radius: 20
            opacity: root.retrying ? 0.5 : 1
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: retryArea.pressed ? "#E0603A" : "#FF7043" }
                GradientStop { position: 1; color: "#F06292" }
            }
            Text {
                anchors.centerIn: parent
                text: "重新加载"
                color: "white"
                font.family: root.fontFamily
                font.pixelSize: 16
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
