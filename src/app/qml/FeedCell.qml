import QtQuick

// One comic of the grid: cover (with its placeholder and badge), name,
// author and clicks.
Rectangle {
    id: cell
    property var comic
    property int comicIndex
    property string fontFamily
    signal tapped()

    objectName: "cell" + comicIndex
    radius: 12
    color: area.pressed ? "#FFF0E6" : "white"
    border.color: "#F0E6DC"

    Item {
        id: coverBox
        x: 10; y: 10
        height: parent.height - 20
        width: Math.round(height * 0.75)
        Image {
            anchors.fill: parent
            source: "image://quorin/art/dcoverdefault.png"
            visible: cover.status !== Image.Ready
            asynchronous: true
        }
        Image {
            id: cover
            objectName: "cover"
            anchors.fill: parent
            fillMode: Image.PreserveAspectCrop
            asynchronous: true
            source: cell.comic && cell.comic.comicCover !== ""
                    ? "image://quorin/net/" + encodeURIComponent(cell.comic.comicCover) : ""
        }
        Image {
            objectName: "badge"
            x: -4
            y: parent.height - height - 12
            width: 58; height: 24
            visible: cell.comic && cell.comic.badge !== ""
            source: visible ? "image://quorin/art/" + cell.comic.badge : ""
            asynchronous: true
        }
    }

    Column {
        anchors.left: coverBox.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: 10
        y: 16
        spacing: 8
        Text {
            width: parent.width
            text: cell.comic ? cell.comic.comicName : ""
            color: "#2E3047"
            font.family: cell.fontFamily
            font.pixelSize: 17
            font.bold: true
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        Text {
            width: parent.width
            text: cell.comic ? cell.comic.comicAuthor : ""
            color: "#8A8197"
            font.family: cell.fontFamily
            font.pixelSize: 13
            elide: Text.ElideRight
        }
        Rectangle {
            visible: cell.comic && cell.comic.comicClickTotal !== ""
            width: Math.min(clicks.implicitWidth + 16, parent.width)
            height: 22
            radius: 11
            color: "#FFF1EB"
            Text {
                id: clicks
                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.parent.width - 16)
                elide: Text.ElideRight
                text: cell.comic ? (cell.width < 260 ? "" : "人气 ") + cell.comic.clickText : ""
                color: "#E0603A"
                font.family: cell.fontFamily
                font.pixelSize: 12
            }
        }
        Text {
            id: blurb
            width: parent.width
            text: cell.comic ? cell.comic.comicDescription : ""
            color: "#9A93A6"
            font.family: cell.fontFamily
            font.pixelSize: 12
            lineHeight: 1.15
            wrapMode: Text.WrapAnywhere
            // As many whole lines as fit above the card's bottom edge.
            maximumLineCount: Math.max(1, Math.floor((cell.height - 30 - blurb.y) / 16))
            elide: Text.ElideRight
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: cell.tapped()
    }
}
