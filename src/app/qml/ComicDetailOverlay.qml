import QtQuick

// The comic detail overlay (tag 300000). The full detail screen comes with
// the catalogue's detail view; until then it shows the comic's cover and name.
Rectangle {
    id: overlay
    property var detail
    property string fontFamily

    radius: 18
    color: "#FFFCF8"
    border.color: "#EADFD3"
    MouseArea { anchors.fill: parent } // the feed underneath takes no touches

    Row {
        anchors.centerIn: parent
        spacing: 36
        Item {
            width: 240; height: 320
            Image {
                anchors.fill: parent
                source: "image://quorin/art/dcoverdefault.png"
                visible: cover.status !== Image.Ready
                asynchronous: true
            }
            Image {
                id: cover
                anchors.fill: parent
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                source: overlay.detail && overlay.detail.comicCover
                        ? "image://quorin/net/" + encodeURIComponent(overlay.detail.comicCover) : ""
            }
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 14
            width: Math.min(360, overlay.width - 360)
            Text {
                objectName: "detailName"
                width: parent.width
                text: overlay.detail ? (overlay.detail.comicName || "") : ""
                color: "#2E3047"
                font.family: overlay.fontFamily
                font.pixelSize: 28
                font.bold: true
                wrapMode: Text.WrapAnywhere
            }
            Text {
                text: overlay.detail && overlay.detail.comicId ? "编号 " + overlay.detail.comicId : ""
                color: "#8A8197"
                font.family: overlay.fontFamily
                font.pixelSize: 15
            }
            Rectangle {
                objectName: "closeDetail"
                width: 140; height: 46
                radius: 23
                color: closeArea.pressed ? "#E0603A" : "#FF7043"
                Text {
                    anchors.centerIn: parent
                    text: "返回"
                    color: "white"
                    font.family: overlay.fontFamily
                    font.pixelSize: 17
                    font.bold: true
                }
                MouseArea {
                    id: closeArea
                    anchors.fill: parent
                    onClicked: rootController.removeComicDetailAndDownloadDeitail()
                }
            }
        }
    }
}
