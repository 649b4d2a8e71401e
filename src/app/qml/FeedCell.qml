import QtQuick
import Quorin

// One comic of the grid: cover (with its placeholder and badge), name,
// author and clicks.
Rectangle {
    id: cell
    property var comic
    property int comicIndex
    property string fontFamily
    signal tapped()

    objectName: "cell" + comicIndex
    radius: Theme.radiusCard
    color: area.pressed ? Theme.cardPressed : Theme.card
    border.color: Theme.cardBorder

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
            source: cell.comic && cell.comic.comicCover
                    ? "image://quorin/net/" + encodeURIComponent(cell.comic.comicCover) : ""
        }
        Image {
            objectName: "badge"
            x: -4
            y: parent.height - height - 12
            width: 58; height: 24
            visible: !!(cell.comic && cell.comic.badge)
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
        spacing: Theme.spacingSmall
        Text {
            width: parent.width
            text: cell.comic ? cell.comic.comicName : ""
            color: Theme.textPrimary
            font.family: cell.fontFamily
            font.pixelSize: Theme.fontTitle
            font.bold: true
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        Text {
            width: parent.width
            text: cell.comic ? cell.comic.comicAuthor : ""
            color: Theme.textTertiary
            font.family: cell.fontFamily
            font.pixelSize: Theme.fontSmall
            elide: Text.ElideRight
        }
        Rectangle {
            visible: !!(cell.comic && cell.comic.comicClickTotal)
            width: Math.min(clicks.implicitWidth + 16, parent.width)
            height: 22
            radius: 11
            color: Theme.accentPale
            Text {
                id: clicks
                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.parent.width - 16)
                elide: Text.ElideRight
                text: cell.comic ? (cell.width < 260 ? "" : "人气 ") + cell.comic.clickText : ""
                color: Theme.accentText
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontCaption
            }
        }
        Text {
            id: blurb
            width: parent.width
            text: cell.comic ? cell.comic.comicDescription : ""
            color: Theme.textMuted
            font.family: cell.fontFamily
            font.pixelSize: Theme.fontCaption
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
