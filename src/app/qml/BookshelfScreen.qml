pragma ComponentBehavior: Bound
import QtQuick
import Quorin

// The bookshelf main screen (button 105). The head holds the segments
// "书架 | 书签 | 最近阅读" (the last two only once their screens exist:
// bookmarksAvailable, recentAvailable) and, on the shelf, the order switch,
// edit/done and the synchronise button. The shelf is a grid of cards that
// wraps at the width, with letter sections as full-width headers. Everything
// it shows comes from VORABoolshelf.
Rectangle {
    id: screen
    property VORABoolshelf shelf
    property string fontFamily
    property VORABookMarkView bookMarkView
    property VORARecendRead recendReadView
    readonly property bool bookmarksAvailable: bookMarkView !== null
    readonly property bool recentAvailable: recendReadView !== null
    // 0 the shelf, 1 bookmarks, 2 recent reading.
    property int segment: 0
    // Cards never narrower than this; as many a row as fit.
    readonly property int minCellWidth: 150
    readonly property int columns: Math.max(1, Math.floor(flow.width / (minCellWidth + flow.spacing)))
    readonly property int cellWidth: Math.floor((flow.width - (columns - 1) * flow.spacing) / columns)

    radius: Theme.radiusPanel
    color: Theme.surface
    border.color: Theme.surfaceBorder
    clip: true

    // A segment whose screen is gone falls back to the shelf.
    onBookmarksAvailableChanged: if (!bookmarksAvailable && segment === 1) segment = 0
    onRecentAvailableChanged: if (!recentAvailable && segment === 2) segment = 0

    component HeadButton: Rectangle {
        id: headButton
        property string label
        property bool current: false
        property bool active: true
        signal clicked()
        width: Math.max(64, buttonText.implicitWidth + 28)
        height: 34
        radius: 17
        opacity: active ? 1 : 0.45
        color: current ? Theme.accent : (buttonArea.pressed ? Theme.pressedOnDark : Theme.barButton)
        Text {
            id: buttonText
            anchors.centerIn: parent
            text: headButton.label
            color: Theme.textOnDark
            font.family: screen.fontFamily
            font.pixelSize: Theme.fontBody
            font.bold: headButton.current
        }
        MouseArea {
            id: buttonArea
            anchors.fill: parent
            enabled: headButton.active
            onClicked: headButton.clicked()
        }
    }

    Rectangle {
        id: head
        objectName: "shelfHead"
        width: parent.width
        height: 56
        radius: Theme.radiusPanel
        color: Theme.barBackground
        Rectangle { width: parent.width; height: 18; anchors.bottom: parent.bottom; color: parent.color }

        Row {
            id: segments
            x: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            HeadButton {
                objectName: "shelfSegment0"
                label: "书架"
                current: screen.segment === 0
                onClicked: screen.segment = 0
            }
            HeadButton {
                objectName: "shelfSegment1"
                visible: screen.bookmarksAvailable
                label: "书签"
                current: screen.segment === 1
                onClicked: screen.segment = 1
            }
            HeadButton {
                objectName: "shelfSegment2"
                visible: screen.recentAvailable
                label: "最近阅读"
                current: screen.segment === 2
                onClicked: screen.segment = 2
            }
        }

        Row {
            visible: screen.segment === 0 && screen.shelf !== null
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall
            HeadButton {
                objectName: "shelfOrderUpdate"
                label: "按更新"
                current: screen.shelf !== null && screen.shelf.sortMode === VORABoolshelf.ByUpdate
                onClicked: screen.shelf.sortMode = VORABoolshelf.ByUpdate
            }
            HeadButton {
                objectName: "shelfOrderLetter"
                label: "按字母"
                current: screen.shelf !== null && screen.shelf.sortMode === VORABoolshelf.ByFirstLetter
                onClicked: screen.shelf.sortMode = VORABoolshelf.ByFirstLetter
            }
            HeadButton {
                objectName: "shelfEdit"
                label: screen.shelf !== null && screen.shelf.editing ? "完成" : "编辑"
                current: screen.shelf !== null && screen.shelf.editing
                active: screen.shelf !== null && screen.shelf.comicCount > 0
                onClicked: screen.shelf.editButtonClick()
            }
            HeadButton {
                objectName: "shelfSync"
                label: "同步"
                active: screen.shelf !== null && screen.shelf.synchronizeEnabled
                onClicked: screen.shelf.synchronizeButtonClick()
            }
        }
    }

    // The shelf; the other segments' screens lie in the same place.
    Flickable {
        id: shelfArea
        objectName: "shelfArea"
        visible: screen.segment === 0
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 12
        contentWidth: width
        contentHeight: flow.height + 12
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Flow {
            id: flow
            width: shelfArea.width
            spacing: Theme.spacing
            Repeater {
                model: screen.shelf ? screen.shelf.shelfList : null
                delegate: BookshelfCell {
                    id: shelfCell
                    width: shelfCell.isSectionHeader ? flow.width : screen.cellWidth
                    height: shelfCell.isSectionHeader ? 40 : Math.round((screen.cellWidth - 16) * 4 / 3) + 112
                    editing: screen.shelf.editing
                    fontFamily: screen.fontFamily
                    onTapped: screen.shelf.openComic(shelfCell.comicId)
                    onContinueTapped: screen.shelf.continueReading(shelfCell.comicId)
                    onDeleteTapped: screen.shelf.deleteComic(shelfCell.comicId)
                }
            }
        }
    }

    BookmarkListView {
        objectName: "bookmarkList"
        visible: screen.segment === 1 && screen.bookmarksAvailable
        anchors.fill: shelfArea
        bookMarkView: screen.bookMarkView
    }
    RecentReadListView {
        objectName: "recentReadList"
        visible: screen.segment === 2 && screen.recentAvailable
        anchors.fill: shelfArea
        recendReadView: screen.recendReadView
    }

    Text {
        objectName: "shelfEmpty"
        visible: screen.segment === 0 && screen.shelf !== null && screen.shelf.comicCount === 0
        anchors.centerIn: shelfArea
        width: Math.min(implicitWidth, shelfArea.width - 40)
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        text: screen.shelf ? screen.shelf.emptyText : ""
        color: Theme.textHint
        font.family: screen.fontFamily
        font.pixelSize: Theme.fontLarge
    }
}
