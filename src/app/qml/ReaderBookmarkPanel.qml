pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The reader's bookmark list (VORABookmarkManager): every bookmark of every
// comic, rows 122 points high with the cover, the comic's name, the day it was
// added and "<comic>_<chapter>_第<n>页". The sort button reverses the order; a
// row's delete action (the cross, or a swipe to the left) shows the
// confirmation "删除". A row tap opens the bookmarked page.
ReaderSidePanel {
    id: root
    property VORABookmarkManager manager
    property string fontFamily: "Noto Sans CJK SC"
    sidePanel: manager
    panelWidth: 440

    Rectangle {
        id: head
        width: parent.width
        height: 64
        color: Theme.barBackground
        Column {
            x: 22
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            Text {
                text: "书签"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontHeadline
                font.bold: true
            }
            Text {
                text: list.count > 0 ? "共 " + list.count + " 个" : ""
                color: Theme.textOnDarkMuted
                font.family: root.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }
        Rectangle {
            objectName: "bookmarkSortButton"
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 104; height: 34
            radius: 17
            color: sortArea.pressed ? Theme.pressedOnDark : Theme.barButton
            Text {
                anchors.centerIn: parent
                text: root.manager && root.manager.bookmarkType === 1 ? "最新在前 ↓" : "最早在前 ↑"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontBody
            }
            MouseArea {
                id: sortArea
                anchors.fill: parent
                onClicked: root.manager.chapterSort()
            }
        }
    }

    ListView {
        id: list
        objectName: "bookmarkPanelList"
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        model: root.manager ? root.manager.model : null
        // One row at a time offers its confirmation.
        property int confirmingRow: -1
        onCountChanged: confirmingRow = -1

        delegate: Item {
            id: row
            required property int index
            required property string comicName
            required property string coverUrl
            required property string dateText
            required property string infoText
            objectName: "bookmarkRow" + row.index
            readonly property bool confirming: list.confirmingRow === row.index
            readonly property int confirmWidth: 96
            width: list.width
            height: root.manager ? root.manager.rowHeight : 122
            clip: true

            Rectangle {
                objectName: "deleteConfirm" + row.index
                anchors.right: parent.right
                width: row.confirmWidth
                height: parent.height
                color: confirmArea.pressed ? Theme.dangerPressed : Theme.danger
                visible: content.x < 0
                Text {
                    anchors.centerIn: parent
                    text: "删除"
                    color: Theme.textOnDark
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontTitle
                    font.bold: true
                }
                MouseArea {
                    id: confirmArea
                    anchors.fill: parent
                    enabled: row.confirming
                    onClicked: {
                        list.confirmingRow = -1
                        root.manager.deleteCurrentBookmarkAtRow(row.index)
                    }
                }
            }

            Rectangle {
                id: content
                objectName: "bookmarkContent" + row.index
                width: parent.width
                height: parent.height
                x: row.confirming ? -row.confirmWidth : 0
                Behavior on x { enabled: !rowArea.swiping; NumberAnimation { duration: 150 } }
                color: rowArea.pressed && !rowArea.swiping ? Theme.cardPressed : (row.index % 2 ? Theme.surface : Theme.surfaceAlt)

                MouseArea {
                    id: rowArea
                    anchors.fill: parent
                    property real startX: 0
                    property bool swiping: false
                    preventStealing: swiping
                    onPressed: function(mouse) { startX = mouse.x; swiping = false }
                    onPositionChanged: function(mouse) {
                        const dx = mouse.x - startX
                        if (!swiping && Math.abs(dx) > 16)
                            swiping = true
                        if (swiping)
                            content.x = Math.max(-row.confirmWidth, Math.min(0, dx + (row.confirming ? -row.confirmWidth : 0)))
                    }
                    onReleased: {
                        if (swiping) {
                            list.confirmingRow = content.x < -row.confirmWidth / 2 ? row.index : -1
                            content.x = Qt.binding(function() { return row.confirming ? -row.confirmWidth : 0 })
                            swiping = false
                        } else if (row.confirming || list.confirmingRow >= 0) {
                            list.confirmingRow = -1 // a tap first takes an offered confirmation back
                        } else {
                            root.manager.selectBookmarkAtRow(row.index)
                        }
                    }
                    onCanceled: {
                        swiping = false
                        content.x = Qt.binding(function() { return row.confirming ? -row.confirmWidth : 0 })
                    }
                }

                Item {
                    id: coverBox
                    x: 18
                    anchors.verticalCenter: parent.verticalCenter
                    width: 72; height: 96
                    Rectangle { anchors.fill: parent; anchors.margins: -1; radius: 6; color: Theme.surfaceBorder }
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
                    x: coverBox.x + coverBox.width + 16
                    width: parent.width - x - deleteAction.width - 24
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: Theme.spacingSmall
                    Text {
                        objectName: "bookmarkName"
                        width: parent.width
                        text: row.comicName
                        color: Theme.textPrimary
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontTitle
                        font.bold: true
                        elide: Text.ElideRight
                    }
                    Text {
                        text: row.dateText
                        color: Theme.textMuted
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontSmall
                    }
                    Text {
                        objectName: "bookmarkInfo"
                        width: parent.width
                        text: row.infoText
                        color: Theme.textSecondary
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontBody
                        elide: Text.ElideMiddle
                    }
                }
                Rectangle {
                    id: deleteAction
                    objectName: "deleteAction" + row.index
                    anchors.right: parent.right
                    anchors.rightMargin: 14
                    anchors.verticalCenter: parent.verticalCenter
                    width: 34; height: 34
                    radius: 17
                    color: deleteArea.pressed ? Theme.accentSoft : Theme.accentPale
                    Repeater {
                        model: [45, -45]
                        Rectangle {
                            required property real modelData
                            anchors.centerIn: parent
                            width: 14; height: 2; radius: 1
                            rotation: modelData
                            color: Theme.accentPressed
                        }
                    }
                    MouseArea {
                        id: deleteArea
                        anchors.fill: parent
                        anchors.margins: -6
                        onClicked: list.confirmingRow = row.confirming ? -1 : row.index
                    }
                }
                Rectangle {
                    anchors.bottom: parent.bottom
                    x: 18
                    width: parent.width - 18
                    height: 1
                    color: Theme.separator
                }
            }
        }

        Text {
            objectName: "bookmarkEmpty"
            anchors.centerIn: parent
            visible: list.count === 0 && root.manager && root.manager.loaded
            text: "还没有书签"
            color: Theme.textMuted
            font.family: root.fontFamily
            font.pixelSize: Theme.fontMedium
        }
    }
}
