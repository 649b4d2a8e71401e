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
        color: "#2E3047"
        Column {
            x: 22
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            Text {
                text: "目录"
                color: "white"
                font.family: root.fontFamily
                font.pixelSize: 20
                font.bold: true
            }
            Text {
                objectName: "chapterCount"
                text: root.manager ? root.manager.countText : ""
                color: "#8E8AA8"
                font.family: root.fontFamily
                font.pixelSize: 13
            }
        }
        Rectangle {
            objectName: "chapterSortButton"
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 88; height: 34
            radius: 17
            color: sortArea.pressed ? "#4DFFFFFF" : "#3A3C58"
            Text {
                anchors.centerIn: parent
                // The flag set means the rows run from the last chapter.
                text: root.manager && root.manager.ascending ? "倒序 ↑" : "正序 ↓"
                color: "white"
                font.family: root.fontFamily
                font.pixelSize: 14
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
            objectName: "chapterRow" + index
            readonly property string chapterId: model.chapterId
            width: list.width
            height: root.manager ? root.manager.rowHeight : 56
            color: rowArea.pressed ? "#FFF0E6" : (model.current ? "#FFF1EB" : (index % 2 ? "#FFFCF8" : "#FFF7F1"))
            Rectangle {
                visible: model.current
                width: 4
                height: parent.height
                color: "#FF7043"
            }
            Text {
                x: 22
                width: parent.width - x - markBox.width - 34
                anchors.verticalCenter: parent.verticalCenter
                text: model.name
                color: model.current ? "#E0603A" : "#2E3047"
                font.family: root.fontFamily
                font.pixelSize: 16
                font.bold: model.current
                elide: Text.ElideRight
            }
            Rectangle {
                id: markBox
                anchors.right: parent.right
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                visible: model.mark !== ""
                width: visible ? markText.implicitWidth + 16 : 0
                height: 22
                radius: 11
                color: model.mark === "comicbuyed" ? "#E8F5E9" : (model.mark === "delayread" ? "#EDE7F6" : "#FFE3D6")
                Text {
                    id: markText
                    anchors.centerIn: parent
                    text: model.mark === "comicbuyed" ? "已购" : (model.mark === "delayread" ? "VIP 抢先" : "付费 " + model.price + "币")
                    color: model.mark === "comicbuyed" ? "#2E7D32" : (model.mark === "delayread" ? "#5E35B1" : "#D84315")
                    font.family: root.fontFamily
                    font.pixelSize: 12
                }
            }
            Rectangle {
                anchors.bottom: parent.bottom
                x: 22
                width: parent.width - 22
                height: 1
                color: "#F1E8DF"
            }
            MouseArea {
                id: rowArea
                anchors.fill: parent
                onClicked: root.manager.selectChapterAtRow(index)
            }
        }
        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: "暂无章节"
            color: "#9A93A6"
            font.family: root.fontFamily
            font.pixelSize: 15
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
