pragma ComponentBehavior: Bound
import QtQuick
import Quorin

// The recommendation feed: tabs, banner, a grid of comics and pull-to-refresh.
// Everything it shows comes from VORARecommentView. The grid holds three
// comics a row where a card keeps at least minCellWidth, fewer in a narrow
// window.
Rectangle {
    id: view
    property VORARecommentView feed
    property string fontFamily
    readonly property int minCellWidth: 260
    readonly property int columns: Math.max(1, Math.min(3, Math.floor((grid.width + 12) / (minCellWidth + 12))))
    readonly property real cellWidth: (grid.width - 12 * (columns - 1)) / columns

    radius: Theme.radiusPanel
    color: Theme.surface
    border.color: Theme.surfaceBorder
    clip: true

    Rectangle {
        id: head
        objectName: "feedHead"
        width: parent.width
        height: 50
        radius: Theme.radiusPanel
        color: Theme.barBackground
        Rectangle { width: parent.width; height: 18; anchors.bottom: parent.bottom; color: parent.color }

        Rectangle {
            id: marker
            objectName: "tabMarker"
            x: view.feed ? view.feed.markerX : 50.1
            y: 10.5
            width: 68; height: 28
            radius: 14
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: Theme.accent }
                GradientStop { position: 1; color: Theme.accentGradientEnd }
            }
            Behavior on x { NumberAnimation { duration: 200 } }
        }
        Repeater {
            model: view.feed ? view.feed.tabTitles : []
            delegate: Item {
                id: tab
                required property int index
                required property string modelData
                objectName: "tab" + (2000 + index)
                x: 27.1 + index * 114.1
                width: 114.1
                height: head.height
                Text {
                    anchors.centerIn: parent
                    text: tab.modelData
                    color: view.feed && view.feed.curTag === 2000 + tab.index ? Theme.textOnDark : Theme.textOnDarkInactive
                    font.family: view.fontFamily
                    font.pixelSize: Theme.fontTitle
                    font.bold: view.feed && view.feed.curTag === 2000 + tab.index
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: view.feed.recommendLabel(2000 + tab.index)
                }
            }
        }
        Text {
            anchors.right: parent.right
            anchors.rightMargin: 22
            anchors.verticalCenter: parent.verticalCenter
            text: view.feed && view.feed.loading ? "加载中…" : "今日推荐"
            color: Theme.textOnDarkMuted
            font.family: view.fontFamily
            font.pixelSize: Theme.fontBody
        }
    }

    ListView {
        id: grid
        objectName: "feedGrid"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 12
        anchors.topMargin: 12
        clip: true
        model: view.feed ? Math.ceil(view.feed.comics.length / view.columns) : 0
        boundsBehavior: Flickable.DragOverBounds
        cacheBuffer: 400

        // The banner scrolls with the rows, in the top margin above the first.
        // Its height follows the width: a view resting at its top stays there
        // (once complete: moving the content while bindings are set up loops).
        topMargin: banner.height + 14
        property real placedMargin: 0
        property bool complete: false
        Component.onCompleted: complete = true
        onTopMarginChanged: {
            if (complete && !moving && contentY <= originY - placedMargin + 0.5)
                contentY = originY - topMargin
            placedMargin = topMargin
        }
        readonly property real restY: originY - topMargin
        readonly property bool pulledFar: contentY < restY - 65

        // At most 400 high: wider windows centre it.
        FeedBanner {
            id: banner
            objectName: "feedBanner"
            parent: grid.contentItem
            y: grid.restY
            width: Math.min(grid.width, Math.round(400 * aspect))
            height: implicitHeight
            x: (grid.width - width) / 2
            feed: view.feed
            fontFamily: view.fontFamily
        }

        delegate: Row {
            id: row
            required property int index
            readonly property int rowIndex: index
            spacing: Theme.spacing
            height: view.feed ? view.feed.rowHeight : 205
            Repeater {
                model: view.feed ? Math.min(view.columns, view.feed.comics.length - row.rowIndex * view.columns) : 0
                delegate: FeedCell {
                    required property int index
                    width: view.cellWidth
                    height: row.height - 12
                    comicIndex: row.rowIndex * view.columns + index
                    comic: view.feed.comics[comicIndex]
                    fontFamily: view.fontFamily
                    onTapped: view.feed.touchImageView(comicIndex)
                }
            }
        }

        onDragEnded: if (pulledFar && view.feed) view.feed.reloadTableViewDataSource()

        // The pull-to-refresh header, 65 high, just above the list.
        Item {
            objectName: "refreshHeader"
            parent: grid
            width: grid.width
            height: 65
            y: grid.restY - grid.contentY - 65
            visible: grid.contentY < grid.restY || (view.feed && view.feed.reloadingUp)
            Text {
                anchors.centerIn: parent
                text: view.feed && view.feed.reloadingUp ? "正在刷新…"
                      : (grid.pulledFar ? "松开即可刷新" : "下拉可以刷新")
                color: Theme.textHint
                font.family: view.fontFamily
                font.pixelSize: Theme.fontMedium
            }
        }
    }

    NoNetworkPanel {
        objectName: "noNetwork8888"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        panel: view.feed ? view.feed.noNetworkView : null
        fontFamily: view.fontFamily
    }
}
