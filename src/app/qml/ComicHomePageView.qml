pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The comic detail page (tag 300000), reused by every list: head information,
// start / continue reading, the bookshelf button and the chapter list with its
// marks and sort. Everything comes from VORAComicHomePageView; `detail` holds
// the name and cover the list passed, shown until the answer arrives.
Rectangle {
    id: page
    property VORAComicHomePageView home
    property VORARootViewController rootController
    property var detail
    property string fontFamily
    readonly property var head: home && home.hasComicInfo ? home.headInfo : ({})
    readonly property string comicName: head.name ? head.name : (detail && detail.comicName ? detail.comicName : "")
    readonly property string coverUrl: head.coverUrl ? head.coverUrl : (detail && detail.comicCover ? detail.comicCover : "")
    readonly property bool wide: width > 820

    radius: Theme.radiusPanel
    color: Theme.surface
    border.color: Theme.surfaceBorder
    clip: true
    MouseArea { anchors.fill: parent } // the list underneath takes no touches

    // --- Head ---
    Rectangle {
        id: band
        width: parent.width
        height: page.wide ? parent.height : headColumn.height + 40
        color: "transparent"
    }

    Item {
        id: headBox
        x: 24; y: 24
        width: page.wide ? 300 : page.width - 48
        height: page.wide ? page.height - 48 : coverBox.height

        Item {
            id: coverBox
            width: page.wide ? 240 : 180
            height: Math.round(width * 4 / 3)
            x: page.wide ? (headBox.width - width) / 2 : 0
            Rectangle {
                anchors.fill: parent
                anchors.margins: -1
                radius: 10
                color: Theme.surfaceBorder
            }
            Image {
                anchors.fill: parent
                source: "image://quorin/art/dcoverdefault.png"
                visible: cover.status !== Image.Ready
                asynchronous: true
            }
            Image {
                id: cover
                objectName: "detailCover"
                anchors.fill: parent
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                source: page.coverUrl !== "" ? "image://quorin/net/" + encodeURIComponent(page.coverUrl) : ""
            }
        }

        Column {
            id: headColumn
            x: page.wide ? 0 : coverBox.width + 24
            y: page.wide ? coverBox.height + 18 : 0
            width: page.wide ? headBox.width : headBox.width - coverBox.width - 24
            spacing: 10
            Text {
                objectName: "detailName"
                width: parent.width
                text: page.comicName
                color: Theme.textPrimary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontDisplayLarge
                font.bold: true
                wrapMode: Text.WrapAnywhere
                maximumLineCount: 2
                elide: Text.ElideRight
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Text {
                width: parent.width
                text: page.head.authorName ? "作者：" + page.head.authorName : ""
                color: Theme.textSecondary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontMedium
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Text {
                objectName: "detailSerial"
                width: parent.width
                text: page.head.serialAndTheme ? page.head.serialAndTheme : ""
                color: Theme.accentText
                font.family: page.fontFamily
                font.pixelSize: Theme.fontBody
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Grid {
                columns: 4
                spacing: 6
                anchors.horizontalCenter: page.wide ? parent.horizontalCenter : undefined
                Stat { title: "人气"; value: page.head.clickTotal ?? "-" }
                Stat { title: "吐槽"; value: page.head.tucaoTotal ?? "-" }
                Stat { title: "月票"; value: page.head.ticketTotal ?? "-" }
                Stat { title: "评论"; value: page.head.commentTotal ?? "-" }
            }
            Row {
                spacing: 10
                anchors.horizontalCenter: page.wide ? parent.horizontalCenter : undefined
                Rectangle {
                    objectName: "readButton"
                    width: 140; height: 46
                    radius: 23
                    opacity: page.home && page.home.hasComicInfo ? 1 : 0.5
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0; color: readArea.pressed ? Theme.accentPressed : Theme.accent }
                        GradientStop { position: 1; color: Theme.accentGradientEnd }
                    }
                    Text {
                        anchors.centerIn: parent
                        text: page.home && page.home.hasReadHistory ? "继续阅读" : "开始阅读"
                        color: Theme.textOnDark
                        font.family: page.fontFamily
                        font.pixelSize: Theme.fontTitle
                        font.bold: true
                    }
                    MouseArea {
                        id: readArea
                        anchors.fill: parent
                        onClicked: page.home.readComicBtnClick()
                    }
                }
                // The page names the picture: on the shelf or not, pressed or not.
                Image {
                    objectName: "bookshelfButton"
                    width: 120; height: 46
                    source: page.home ? "image://quorin/art/" + (shelfArea.pressed ? page.home.bookshelfButtonPressedImage
                                                                                   : page.home.bookshelfButtonImage)
                                      : ""
                    sourceSize.width: 240
                    sourceSize.height: 92
                    MouseArea {
                        id: shelfArea
                        anchors.fill: parent
                        onClicked: page.home.addBookShelfBtnClick()
                    }
                }
            }
        }
    }

    // --- Description and chapters ---
    Item {
        id: body
        x: page.wide ? headBox.x + headBox.width + 28 : 24
        y: page.wide ? 24 : headBox.y + Math.max(coverBox.height, headColumn.height) + 20
        width: page.width - x - 24
        height: page.height - y - 16

        Text {
            id: blurb
            width: parent.width - closeButton.width - 16
            text: page.head.description ? page.head.description : ""
            color: Theme.textSecondary
            font.family: page.fontFamily
            font.pixelSize: Theme.fontMedium
            lineHeight: 1.25
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 4
            elide: Text.ElideRight
        }
        Rectangle {
            id: closeButton
            objectName: "closeDetail"
            anchors.right: parent.right
            width: 96; height: 40
            radius: 20
            color: closeArea.pressed ? Theme.barButton : Theme.barBackground
            Text {
                anchors.centerIn: parent
                text: "返回"
                color: Theme.textOnDark
                font.family: page.fontFamily
                font.pixelSize: Theme.fontLarge
                font.bold: true
            }
            MouseArea {
                id: closeArea
                anchors.fill: parent
                onClicked: page.home ? page.home.close() : page.rootController.removeComicDetailAndDownloadDeitail()
            }
        }

        Rectangle {
            id: chapterHead
            y: Math.max(blurb.height, closeButton.height) + 16
            width: parent.width
            height: 35
            color: "transparent"
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "章节列表" + (page.home && page.home.chapterView.count > 0 ? "（共" + page.home.chapterView.count + "话）" : "")
                color: Theme.textPrimary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontHeading
                font.bold: true
            }
            Text {
                anchors.right: sortButton.left
                anchors.rightMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                text: page.head.lastUpdateChapterName ? "最新：" + page.head.lastUpdateChapterName : ""
                color: Theme.textMuted
                font.family: page.fontFamily
                font.pixelSize: Theme.fontSmall
            }
            Rectangle {
                id: sortButton
                objectName: "chapterSortButton"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: 88; height: 32
                radius: Theme.radiusButton
                color: sortArea.pressed ? Theme.accentSoft : Theme.accentPale
                Text {
                    anchors.centerIn: parent
                    text: page.home && !page.home.chapterView.ascending ? "倒序 ↑" : "正序 ↓"
                    color: Theme.accentText
                    font.family: page.fontFamily
                    font.pixelSize: Theme.fontBody
                }
                MouseArea {
                    id: sortArea
                    anchors.fill: parent
                    onClicked: page.home.chapterView.chapterSortUp()
                }
            }
        }

        ListView {
            id: chapters
            objectName: "chapterList"
            y: chapterHead.y + chapterHead.height + 6
            width: parent.width
            height: parent.height - y
            clip: true
            model: page.home ? page.home.chapterView : null
            delegate: Rectangle {
                id: chapterRow
                required property int index
                required property string chapterId
                required property string name
                required property string mark
                required property int price
                required property string sizeText
                objectName: "chapter" + index
                width: chapters.width
                height: 45
                color: rowArea.pressed ? Theme.cardPressed : (chapterRow.index % 2 ? Theme.surface : Theme.surfaceAlt)
                radius: 8
                Text {
                    x: 16
                    width: parent.width - x - meta.width - markBox.width - 40
                    anchors.verticalCenter: parent.verticalCenter
                    text: chapterRow.name
                    color: Theme.textPrimary
                    font.family: page.fontFamily
                    font.pixelSize: Theme.fontMedium
                    elide: Text.ElideRight
                }
                Rectangle {
                    id: markBox
                    anchors.right: meta.left
                    anchors.rightMargin: 14
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
                        font.family: page.fontFamily
                        font.pixelSize: Theme.fontCaption
                    }
                }
                Text {
                    id: meta
                    anchors.right: parent.right
                    anchors.rightMargin: 16
                    anchors.verticalCenter: parent.verticalCenter
                    text: chapterRow.sizeText
                    color: Theme.textMuted
                    font.family: page.fontFamily
                    font.pixelSize: Theme.fontSmall
                }
                MouseArea {
                    id: rowArea
                    anchors.fill: parent
                    onClicked: page.home.readCurrentChapterAtRow(chapterRow.index)
                }
            }
        }
    }

    // --- Waiting and failure ---
    Rectangle {
        objectName: "detailWait"
        anchors.fill: parent
        radius: Theme.radiusPanel
        color: Theme.surfaceTranslucent
        visible: page.home && page.home.state === 0 && !page.home.hasComicInfo
        Column {
            anchors.centerIn: parent
            spacing: 16
            Rectangle {
                id: waitRing
                anchors.horizontalCenter: parent.horizontalCenter
                width: 44; height: 44; radius: 22
                color: "transparent"
                border.color: Theme.accent
                border.width: 4
                Rectangle { width: 12; height: 12; radius: 6; color: Theme.surface; x: 30; y: 2 }
                // Turns only while it is on screen: a running animation draws
                // frames even under a hidden item.
                RotationAnimation on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite; running: waitRing.visible }
            }
            Text {
                text: page.home ? page.home.waitText : ""
                color: Theme.textSecondary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontLarge
            }
        }
    }
    Rectangle {
        objectName: "detailError"
        anchors.fill: parent
        radius: Theme.radiusPanel
        color: Theme.surfaceTranslucent
        visible: page.home && page.home.state === 2 && !page.home.hasComicInfo
        Column {
            anchors.centerIn: parent
            spacing: 14
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "请求服务器失败，点击屏幕重新请求哦~！"
                color: Theme.textSecondary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontTitle
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "返回"
                color: Theme.accentText
                font.family: page.fontFamily
                font.pixelSize: Theme.fontMedium
                MouseArea { anchors.fill: parent; anchors.margins: -10; onClicked: page.home.close() }
            }
        }
        MouseArea { anchors.fill: parent; z: -1; onClicked: page.home.beginRequestData() }
    }

    // One of the head's figures: the number above, its name below.
    component Stat: Rectangle {
        id: stat
        property string title
        property string value
        width: 68; height: 50
        radius: 10
        color: Theme.surfaceWarm
        Column {
            anchors.centerIn: parent
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: stat.value
                color: Theme.textPrimary
                font.family: page.fontFamily
                font.pixelSize: Theme.fontBody
                font.bold: true
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: stat.title
                color: Theme.textMuted
                font.family: page.fontFamily
                font.pixelSize: Theme.fontTiny
            }
        }
    }
}
