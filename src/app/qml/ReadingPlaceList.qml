pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// A list of places in comics (the bookmarks or the recent reading): a bar with
// the number of rows, the order switch and the edit button; rows with the
// cover, the comic's and the chapter's names, the page and the time. A tap on
// a row opens the reader there; in edit mode each row offers "删除" instead.
// The list is read again from the store whenever it comes into view.
Item {
    id: root
    property ReadingPlaceScreen screen
    property string countUnit: "条"

    function refresh() {
        if (root.screen && root.visible)
            root.screen.updateView()
    }
    onVisibleChanged: refresh()
    onScreenChanged: refresh()
    Component.onCompleted: refresh()

    component BarButton: Rectangle {
        id: button
        property string label
        signal clicked()
        width: Math.max(88, caption.implicitWidth + 28)
        height: 34
        radius: height / 2
        color: area.pressed ? Theme.accentSoft : Theme.accentPale
        Text {
            id: caption
            anchors.centerIn: parent
            text: button.label
            color: Theme.accentText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.fontBody
        }
        MouseArea {
            id: area
            anchors.fill: parent
            onClicked: button.clicked()
        }
    }

    Rectangle {
        id: bar
        width: parent.width
        height: 52
        color: Theme.surfaceAlt
        Text {
            objectName: "placeCount"
            x: Theme.spacing
            anchors.verticalCenter: parent.verticalCenter
            text: list.count > 0 ? "共 " + list.count + " " + root.countUnit : ""
            color: Theme.textSecondary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.fontBody
        }
        Row {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall
            BarButton {
                objectName: "orderSwitch"
                label: root.screen && root.screen.newestFirst ? "最新在前 ↓" : "最早在前 ↑"
                onClicked: root.screen.toggleOrder()
            }
            BarButton {
                objectName: "editButton"
                visible: list.count > 0 || (root.screen !== null && root.screen.editing)
                label: root.screen && root.screen.editing ? "完成" : "编辑"
                onClicked: root.screen.editButtonClick()
            }
        }
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
    }

    ListView {
        id: list
        objectName: "placeList"
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        model: root.screen ? root.screen.rows : null

        delegate: Rectangle {
            id: row
            required property int index
            required property string comicName
            required property string coverUrl
            required property string chapterName
            required property int pageNumber
            required property string timeText
            objectName: "placeRow" + row.index
            readonly property bool editing: root.screen !== null && root.screen.editing
            width: list.width
            height: 112
            color: rowArea.pressed && !row.editing ? Theme.cardPressed : (row.index % 2 ? Theme.surface : Theme.surfaceAlt)

            MouseArea {
                id: rowArea
                anchors.fill: parent
                onClicked: root.screen.selectRow(row.index)
            }
            Item {
                id: coverBox
                x: Theme.spacing
                anchors.verticalCenter: parent.verticalCenter
                width: 66; height: 88
                Rectangle { anchors.fill: parent; anchors.margins: -1; radius: Theme.radiusCard; color: Theme.surfaceBorder }
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
                    source: row.coverUrl !== "" ? "image://quorin/net/" + encodeURIComponent(row.coverUrl) : ""
                }
            }
            Column {
                x: coverBox.x + coverBox.width + Theme.spacing
                width: action.x - x - Theme.spacing
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.spacingSmall
                Text {
                    objectName: "placeComicName"
                    width: parent.width
                    text: row.comicName
                    color: Theme.textPrimary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontTitle
                    font.bold: true
                    elide: Text.ElideRight
                }
                Text {
                    objectName: "placeChapter"
                    width: parent.width
                    text: row.chapterName + "  第" + row.pageNumber + "页"
                    color: Theme.textSecondary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontBody
                    elide: Text.ElideMiddle
                }
                Text {
                    objectName: "placeTime"
                    text: row.timeText
                    color: Theme.textMuted
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontSmall
                }
            }
            Rectangle {
                id: action
                objectName: row.editing ? "deleteRow" + row.index : "continueRow" + row.index
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacing
                anchors.verticalCenter: parent.verticalCenter
                width: 96; height: 36
                radius: height / 2
                color: row.editing ? (deleteArea.pressed ? Theme.dangerPressed : Theme.danger) : "transparent"
                Text {
                    anchors.centerIn: parent
                    text: row.editing ? "删除" : "继续阅读 ›"
                    color: row.editing ? Theme.textOnDark : Theme.accentText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontBody
                    font.bold: row.editing
                }
                MouseArea {
                    id: deleteArea
                    anchors.fill: parent
                    enabled: row.editing
                    onClicked: root.screen.deleteRow(row.index)
                }
            }
            Rectangle {
                anchors.bottom: parent.bottom
                x: Theme.spacing
                width: parent.width - x
                height: 1
                color: Theme.separator
            }
        }
    }

    Text {
        objectName: "placeEmpty"
        anchors.centerIn: list
        visible: list.count === 0 && root.screen !== null
        text: root.screen ? root.screen.emptyText : ""
        color: Theme.textMuted
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontMedium
    }
}
