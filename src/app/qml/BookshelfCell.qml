import QtQuick
import Quorin

// One row of the bookshelf: a letter section's header across the whole width,
// or a comic's card (cover with its marks, name, newest chapter, the chapter
// last read, "continue"). In edit mode a card carries a delete button and a
// tap on it opens nothing. Its properties are the shelf model's roles.
Item {
    id: cell
    required property string comicId
    required property string comicName
    required property string coverUrl
    required property string latestChapterName
    required property string latestReadChapterName
    required property bool isHasUpdate
    required property bool isNotRead
    required property string section
    required property bool isSectionHeader
    property bool editing: false
    property string fontFamily
    signal tapped()
    signal continueTapped()
    signal deleteTapped()

    objectName: isSectionHeader ? "shelfSection" + section : "shelfComic" + comicId

    Text {
        visible: cell.isSectionHeader
        x: 6
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        text: cell.section
        color: Theme.accentText
        font.family: cell.fontFamily
        font.pixelSize: Theme.fontHeadline
        font.bold: true
    }
    Rectangle {
        visible: cell.isSectionHeader
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Rectangle {
        id: card
        visible: !cell.isSectionHeader
        anchors.fill: parent
        radius: Theme.radiusCard
        color: area.pressed && !cell.editing ? Theme.cardPressed : Theme.card
        border.color: Theme.cardBorder

        MouseArea {
            id: area
            anchors.fill: parent
            onClicked: cell.tapped()
        }

        Item {
            id: coverBox
            x: 8; y: 8
            width: parent.width - 16
            height: Math.round(width * 4 / 3)
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
                sourceSize.width: 240
                source: cell.coverUrl !== "" ? "image://quorin/net/" + encodeURIComponent(cell.coverUrl) : ""
            }
            // The marks: a newer chapter is out, or the comic waits to be read.
            Rectangle {
                objectName: "shelfUpdateMark"
                visible: cell.isHasUpdate
                x: parent.width - width - 6; y: 6
                width: updateText.implicitWidth + 14; height: 22
                radius: 11
                color: Theme.danger
                Text {
                    id: updateText
                    anchors.centerIn: parent
                    text: "更新"
                    color: Theme.textOnDark
                    font.family: cell.fontFamily
                    font.pixelSize: Theme.fontCaption
                    font.bold: true
                }
            }
            Rectangle {
                objectName: "shelfNotReadMark"
                visible: cell.isNotRead && !cell.isHasUpdate
                x: parent.width - width - 6; y: 6
                width: notReadText.implicitWidth + 14; height: 22
                radius: 11
                color: Theme.accent
                Text {
                    id: notReadText
                    anchors.centerIn: parent
                    text: "未读"
                    color: Theme.textOnDark
                    font.family: cell.fontFamily
                    font.pixelSize: Theme.fontCaption
                    font.bold: true
                }
            }
        }

        Column {
            x: 10
            anchors.top: coverBox.bottom
            anchors.topMargin: 6
            width: parent.width - 20
            spacing: 2
            Text {
                width: parent.width
                text: cell.comicName
                color: Theme.textPrimary
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontMedium
                font.bold: true
                elide: Text.ElideRight
            }
            Text {
                width: parent.width
                text: cell.latestChapterName !== "" ? "更新至 " + cell.latestChapterName : " "
                color: Theme.textTertiary
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontCaption
                elide: Text.ElideRight
            }
            Text {
                width: parent.width
                text: cell.latestReadChapterName !== "" ? "读到 " + cell.latestReadChapterName : "未开始阅读"
                color: Theme.textHint
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontCaption
                elide: Text.ElideRight
            }
        }

        Rectangle {
            objectName: "shelfContinue"
            visible: !cell.editing
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 8
            width: parent.width - 20
            height: 28
            radius: 14
            color: continueArea.pressed ? Theme.accentPressed : Theme.accent
            Text {
                anchors.centerIn: parent
                text: cell.latestReadChapterName !== "" ? "继续阅读" : "开始阅读"
                color: Theme.textOnDark
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontSmall
                font.bold: true
            }
            MouseArea {
                id: continueArea
                anchors.fill: parent
                onClicked: cell.continueTapped()
            }
        }

        // Edit mode: the whole card dims under a delete button.
        Rectangle {
            visible: cell.editing
            anchors.fill: parent
            radius: Theme.radiusCard
            color: Theme.cardEditShade
        }
        Rectangle {
            objectName: "shelfDelete"
            visible: cell.editing
            anchors.centerIn: coverBox
            width: 76; height: 34
            radius: 17
            color: deleteArea.pressed ? Theme.dangerPressed : Theme.danger
            Text {
                anchors.centerIn: parent
                text: "删除"
                color: Theme.textOnDark
                font.family: cell.fontFamily
                font.pixelSize: Theme.fontBody
                font.bold: true
            }
            MouseArea {
                id: deleteArea
                anchors.fill: parent
                onClicked: cell.deleteTapped()
            }
        }
    }
}
