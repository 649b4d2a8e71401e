pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The reader's chapter list (VORAChapterManager): the count label, the sort
// button and one row per chapter with its paid / bought / sealed mark; the
// chapter being read stands out. A row tap goes through the read gate.
ReaderSidePanel {
    id: root
    property VORAChapterManager manager
    property string fontFamily: "Noto Sans CJK SC"
    sidePanel: manager
    panelWidth: 400

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
                text: "目录"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontHeadline
                font.bold: true
            }
            Text {
                objectName: "chapterCount"
                text: root.manager ? root.manager.countText : ""
                color: Theme.textOnDarkMuted
                font.family: root.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }
        Rectangle {
            objectName: "chapterSortButton"
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 88; height: 34
            radius: 17
            color: sortArea.pressed ? Theme.pressedOnDark : Theme.barButton
            Text {
                anchors.centerIn: parent
                // The flag set means the rows run from the last chapter.
                text: root.manager && root.manager.ascending ? "倒序 ↑" : "正序 ↓"
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
        objectName: "chapterPanelList"
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        model: root.manager ? root.manager.model : null
        delegate: Rectangle {
            id: chapterRow
            required property int index
            required property string chapterId
            required property string name
            required property string mark
            required property int price
            required property bool current
            objectName: "chapterRow" + chapterRow.index
            width: list.width
            height: root.manager ? root.manager.rowHeight : 56
            color: rowArea.pressed ? Theme.cardPressed : (chapterRow.current ? Theme.accentPale : (chapterRow.index % 2 ? Theme.surface : Theme.surfaceAlt))
            Rectangle {
                visible: chapterRow.current
                width: 4
                height: parent.height
                color: Theme.accent
            }
            Text {
                x: 22
                width: parent.width - x - markBox.width - 34
                anchors.verticalCenter: parent.verticalCenter
                text: chapterRow.name
                color: chapterRow.current ? Theme.accentText : Theme.textPrimary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontLarge
                font.bold: chapterRow.current
                elide: Text.ElideRight
            }
            Rectangle {
                id: markBox
                anchors.right: parent.right
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                visible: chapterRow.mark !== ""
                width: visible ? markText.implicitWidth + 16 : 0
                height: 22
                radius: 11
                color: chapterRow.mark === "comicbuyed" ? Theme.markBoughtBackground : (chapterRow.mark === "delayread" ? Theme.markLaterBackground : Theme.markPaidBackground)
                Text {
                    id: markText
                    anchors.centerIn: parent
                    text: chapterRow.mark === "comicbuyed" ? "已购" : (chapterRow.mark === "delayread" ? "VIP 抢先" : "付费 " + chapterRow.price + "币")
                    color: chapterRow.mark === "comicbuyed" ? Theme.markBoughtText : (chapterRow.mark === "delayread" ? Theme.markLaterText : Theme.markPaidText)
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontCaption
                }
            }
            Rectangle {
                anchors.bottom: parent.bottom
                x: 22
                width: parent.width - 22
                height: 1
                color: Theme.separator
            }
            MouseArea {
                id: rowArea
                anchors.fill: parent
                onClicked: root.manager.selectChapterAtRow(chapterRow.index)
            }
        }
        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: "暂无章节"
            color: Theme.textMuted
            font.family: root.fontFamily
            font.pixelSize: Theme.fontMedium
        }
        // The chapter being read stays in the middle until the reader scrolls.
        property bool userMoved: false
        function showCurrent() {
            if (!userMoved && height > 0 && root.manager && root.manager.model.currentRow >= 0)
                positionViewAtIndex(root.manager.model.currentRow, ListView.Center)
        }
        onMovementStarted: userMoved = true
        onHeightChanged: showCurrent()
        onCountChanged: showCurrent()
        Component.onCompleted: showCurrent()
    }
}
