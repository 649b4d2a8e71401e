import QtQuick
import Quorin

// One comic of the category or search list: the cover with its placeholder
// and badge, then name, author, clicks and blurb. gridMode draws the narrow
// card of the three-column grid; otherwise a wide row. What it shows is
// named after the comic list model's roles: as a delegate of that model it
// takes them from the row.
Rectangle {
    id: cell
    property bool gridMode: true
    property int comicIndex
    required property string comicName
    required property string comicAuthor
    required property string comicCover
    required property string comicDescription
    required property string comicClickTotal
    required property string badge
    required property string lastUpdate
    property string fontFamily
    signal tapped()

    objectName: "comic" + comicIndex
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
            sourceSize.width: 240
            source: cell.comicCover !== "" ? "image://quorin/net/" + encodeURIComponent(cell.comicCover) : ""
        }
        Image {
            x: -4
            y: parent.height - height - 12
            width: 58; height: 24
            visible: cell.badge !== ""
            source: visible ? "image://quorin/art/" + cell.badge : ""
            asynchronous: true
        }
    }

    Column {
        anchors.left: coverBox.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: 12
        y: 16
        spacing: cell.gridMode ? 8 : 10
        Text {
            width: parent.width
            text: cell.comicName
            color: Theme.textPrimary
            font.family: cell.fontFamily
            font.pixelSize: cell.gridMode ? 17 : 20
            font.bold: true
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        Row {
            width: parent.width
            spacing: Theme.spacing
            Text {
                width: Math.min(implicitWidth, parent.width - (updated.visible ? updated.width + 12 : 0))
                elide: Text.ElideRight
                text: cell.comicAuthor
                color: Theme.textTertiary
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontSmall
            }
            Text {
                id: updated
                visible: !cell.gridMode && cell.lastUpdate !== ""
                text: "更新于 " + cell.lastUpdate
                color: Theme.textPlaceholder
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }
        Rectangle {
            visible: cell.comicClickTotal !== ""
            width: Math.min(clicks.implicitWidth + 16, parent.width)
            height: 22
            radius: 11
            color: Theme.accentPale
            Text {
                id: clicks
                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.parent.width - 16)
                elide: Text.ElideRight
                text: "人气 " + cell.comicClickTotal
                color: Theme.accentText
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontCaption
            }
        }
        Text {
            id: blurb
            width: parent.width
            text: cell.comicDescription
            color: Theme.textMuted
            font.family: cell.fontFamily
            font.pixelSize: cell.gridMode ? 12 : 14
            lineHeight: 1.15
            wrapMode: Text.WrapAnywhere
            maximumLineCount: Math.max(1, Math.floor((cell.height - 30 - blurb.y) / (cell.gridMode ? 16 : 19)))
            elide: Text.ElideRight
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: cell.tapped()
    }
}
