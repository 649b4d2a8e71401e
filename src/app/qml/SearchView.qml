pragma ComponentBehavior: Bound
import QtQuick
import Quorin

// The search screen: the search field, the cloud of hot keywords, the history
// panel and the result list. Everything it shows comes from VORASearchView.
Rectangle {
    id: view
    property VORASearchView search
    property string fontFamily

    radius: Theme.radiusPanel
    color: Theme.surface
    border.color: Theme.surfaceBorder
    clip: true

    Rectangle {
        id: head
        width: parent.width
        height: 72
        radius: Theme.radiusPanel
        color: Theme.barBackground
        Rectangle { width: parent.width; height: 18; anchors.bottom: parent.bottom; color: parent.color }

        Rectangle {
            id: field
            x: 22
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 44 - searchButton.width - 12
            height: 44
            radius: 22
            color: Theme.card
            Image {
                x: 16
                anchors.verticalCenter: parent.verticalCenter
                width: 20; height: 20
                source: "image://quorin/art/searchglass.png"
                asynchronous: true
            }
            TextInput {
                id: input
                objectName: "searchField"
                x: 44
                width: parent.width - 60
                anchors.verticalCenter: parent.verticalCenter
                font.family: view.fontFamily
                font.pixelSize: Theme.fontTitle
                color: Theme.textPrimary
                clip: true
                text: view.search ? view.search.fieldText : ""
                onTextEdited: view.search.textDidChange(text)
                onAccepted: view.search.searchButtonClicked(text)
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: input.text === "" && !input.activeFocus
                    text: "搜索漫画名或作者"
                    color: Theme.textPlaceholder
                    font: input.font
                }
            }
        }
        Rectangle {
            id: searchButton
            objectName: "searchButton"
            anchors.right: parent.right
            anchors.rightMargin: 22
            anchors.verticalCenter: parent.verticalCenter
            width: 96; height: 44
            radius: 22
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: searchArea.pressed ? Theme.accentPressed : Theme.accent }
                GradientStop { position: 1; color: Theme.accentGradientEnd }
            }
            Text {
                anchors.centerIn: parent
                text: "搜索"
                color: Theme.textOnDark
                font.family: view.fontFamily
                font.pixelSize: Theme.fontTitle
                font.bold: true
            }
            MouseArea {
                id: searchArea
                anchors.fill: parent
                onClicked: { input.focus = false; view.search.searchButtonClicked(input.text) }
            }
        }
    }

    Connections {
        target: view.search
        function onResignKeyboard() { input.focus = false }
    }

    // The keyword cloud, 503 points wide in its own coordinates, scaled into the screen.
    Item {
        id: cloudArea
        objectName: "tagCloud"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        readonly property VORACloudView cloud: view.search ? view.search.cloudView : null

        Text {
            x: 28; y: 20
            text: "热门搜索"
            color: Theme.textPrimary
            font.family: view.fontFamily
            font.pixelSize: Theme.fontHeadingLarge
            font.bold: true
        }
        Text {
            x: 28; y: 48
            text: "点一下关键词，马上找到想看的漫画"
            color: Theme.textMuted
            font.family: view.fontFamily
            font.pixelSize: Theme.fontSmall
        }
        Item {
            id: cloudBox
            // The cloud's 503-point area, scaled to fill the screen (positions
            // and sizes scaled, the text drawn at its scaled size).
            readonly property real contentBottom: {
                var bottom = 1
                var list = cloudArea.cloud ? cloudArea.cloud.buttons : []
                for (var i = 0; i < list.length; ++i)
                    bottom = Math.max(bottom, list[i].y + list[i].height + 8)
                return bottom
            }
            readonly property real s: Math.max(0.5, Math.min((cloudArea.width - 40) / 503, (cloudArea.height - 100) / contentBottom, 1.9))
            width: 503 * s
            height: contentBottom * s
            x: (cloudArea.width - width) / 2
            y: 82
            Repeater {
                model: cloudArea.cloud ? cloudArea.cloud.buttons : []
                delegate: Rectangle {
                    id: tag
                    required property cloudButton modelData
                    objectName: "cloud" + modelData.tag
                    readonly property int look: modelData.fontSize - 12
                    readonly property color fill: Theme.tagFills[look]
                    readonly property color ink: Theme.tagInks[look]
                    x: (tag.modelData.x - 6) * cloudBox.s
                    y: tag.modelData.y * cloudBox.s
                    width: (tag.modelData.width + 12) * cloudBox.s
                    height: (tag.modelData.height + 8) * cloudBox.s
                    radius: height / 2
                    color: tagArea.pressed ? Qt.darker(tag.fill, 1.1) : tag.fill
                    border.color: Qt.darker(tag.fill, 1.06)
                    Text {
                        anchors.centerIn: parent
                        text: tag.modelData.text
                        color: tag.ink
                        font.family: view.fontFamily
                        font.pixelSize: Math.round(tag.modelData.fontSize * cloudBox.s)
                        font.bold: tag.look >= 2
                    }
                    MouseArea {
                        id: tagArea
                        anchors.fill: parent
                        onClicked: cloudArea.cloud.tapButton(tag.modelData.tag)
                    }
                }
            }
        }
    }

    // The results, in front of the cloud once a search answered.
    Rectangle {
        id: results
        objectName: "searchResults"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        color: Theme.surface
        visible: view.search && view.search.resultsVisible
        ListView {
            id: list
            objectName: "resultList"
            anchors.fill: parent
            anchors.margins: 12
            clip: true
            model: view.search ? view.search.results : null
            spacing: 0
            // The title row above the first result and the no-result row
            // under the last scroll with the results, in the margins.
            topMargin: resultTitle.height
            bottomMargin: noResult.height
            Item {
                id: resultTitle
                parent: list.contentItem
                y: list.originY - list.topMargin
                width: list.width
                height: 52
                Text {
                    objectName: "resultHeader"
                    x: 10
                    anchors.verticalCenter: parent.verticalCenter
                    text: view.search ? view.search.headerText : ""
                    color: Theme.textSecondary
                    font.family: view.fontFamily
                    font.pixelSize: Theme.fontLarge
                }
                Rectangle {
                    objectName: "closeResults"
                    anchors.right: parent.right
                    anchors.rightMargin: 6
                    anchors.verticalCenter: parent.verticalCenter
                    width: 112; height: 36
                    radius: Theme.radiusPanel
                    color: backArea.pressed ? Theme.accentSoft : Theme.accentPale
                    Text {
                        anchors.centerIn: parent
                        text: "热门搜索"
                        color: Theme.accentText
                        font.family: view.fontFamily
                        font.pixelSize: Theme.fontMedium
                    }
                    MouseArea {
                        id: backArea
                        anchors.fill: parent
                        onClicked: view.search.comiclistOutView()
                    }
                }
            }
            delegate: Item {
                id: resultRow
                required property int index
                required property string comicName
                required property string comicAuthor
                required property string comicCover
                required property string comicDescription
                required property string comicClickTotal
                required property string badge
                required property string lastUpdate
                width: list.width
                height: view.search ? view.search.resultRowHeight : 150
                SortComicCell {
                    anchors.fill: parent
                    anchors.bottomMargin: 12
                    gridMode: false
                    objectName: "result" + resultRow.index
                    comicIndex: resultRow.index
                    comicName: resultRow.comicName
                    comicAuthor: resultRow.comicAuthor
                    comicCover: resultRow.comicCover
                    comicDescription: resultRow.comicDescription
                    comicClickTotal: resultRow.comicClickTotal
                    badge: resultRow.badge
                    lastUpdate: resultRow.lastUpdate
                    fontFamily: view.fontFamily
                    onTapped: view.search.openResult(comicIndex)
                }
            }
            Item {
                id: noResult
                parent: list.contentItem
                y: list.originY + list.contentHeight
                width: list.width
                height: view.search && view.search.noResult ? view.search.noResultRowHeight : 0
                visible: height > 0
                Column {
                    objectName: "noResultRow"
                    anchors.centerIn: parent
                    spacing: Theme.spacing
                    Image {
                        anchors.horizontalCenter: parent.horizontalCenter
                        source: "image://quorin/art/searchcutnotlink.png"
                        width: 96; height: 96
                        asynchronous: true
                    }
                    Text {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "很抱歉,"
                        color: Theme.textSecondary
                        font.family: view.fontFamily
                        font.pixelSize: Theme.fontHeading
                    }
                    Text {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "没有你要找的漫画哦~"
                        color: Theme.textSecondary
                        font.family: view.fontFamily
                        font.pixelSize: Theme.fontHeading
                    }
                }
            }
        }
    }

    // The history panel under the field: x 33, the width less 66, 195 high.
    Rectangle {
        objectName: "historyPanel"
        x: 33
        y: head.height
        width: parent.width - 66
        height: 195
        visible: view.search && view.search.historyVisible
        radius: Theme.radiusCard
        color: Theme.card
        border.color: Theme.surfaceBorder
        ListView {
            id: historyList
            anchors.fill: parent
            anchors.margins: 8
            anchors.bottomMargin: 48
            clip: true
            model: view.search ? view.search.searchHistoryArray : []
            delegate: Rectangle {
                id: historyRow
                required property int index
                required property string modelData
                objectName: "history" + index
                width: historyList.width
                height: 38
                color: historyArea.pressed ? Theme.accentPale : "transparent"
                radius: 8
                Image {
                    id: clock
                    objectName: "historyClock"
                    x: 14
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18; height: 18
                    source: "image://quorin/art/searchhistory.png"
                    asynchronous: true
                }
                Text {
                    anchors.left: clock.right
                    anchors.leftMargin: 10
                    anchors.right: parent.right
                    anchors.rightMargin: 14
                    elide: Text.ElideRight
                    anchors.verticalCenter: parent.verticalCenter
                    text: historyRow.modelData
                    color: Theme.textPrimary
                    font.family: view.fontFamily
                    font.pixelSize: Theme.fontLarge
                }
                MouseArea {
                    id: historyArea
                    anchors.fill: parent
                    onClicked: view.search.enterComicListHistory(historyRow.modelData)
                }
            }
        }
        Text {
            objectName: "clear554444"
            visible: view.search && view.search.searchHistoryArray.length > 0
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 12
            text: "清除搜索记录"
            color: Theme.accentText
            font.family: view.fontFamily
            font.pixelSize: Theme.fontMedium
            MouseArea {
                anchors.fill: parent
                anchors.margins: -8
                onClicked: view.search.clearnAllSearchHistory()
            }
        }
    }
}
