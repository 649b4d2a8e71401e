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

    radius: 18
    color: "#FFFCF8"
    border.color: "#EADFD3"
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
                color: "#EADFD3"
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
                color: "#2E3047"
                font.family: page.fontFamily
                font.pixelSize: 26
                font.bold: true
                wrapMode: Text.WrapAnywhere
                maximumLineCount: 2
                elide: Text.ElideRight
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Text {
                width: parent.width
                text: page.head.authorName ? "作者：" + page.head.authorName : ""
                color: "#6B6477"
                font.family: page.fontFamily
                font.pixelSize: 15
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Text {
                objectName: "detailSerial"
                width: parent.width
                text: page.head.serialAndTheme ? page.head.serialAndTheme : ""
                color: "#E0603A"
                font.family: page.fontFamily
                font.pixelSize: 14
                horizontalAlignment: page.wide ? Text.AlignHCenter : Text.AlignLeft
            }
            Grid {
                columns: 4
                spacing: 6
                anchors.horizontalCenter: page.wide ? parent.horizontalCenter : undefined
                Repeater {
                    model: [["人气", page.head.clickTotal], ["吐槽", page.head.tucaoTotal],
                            ["月票", page.head.ticketTotal], ["评论", page.head.commentTotal]]
                    delegate: Rectangle {
                        width: 68; height: 50
                        radius: 10
                        color: "#FFF5EF"
                        Column {
                            anchors.centerIn: parent
                            Text {
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: modelData[1] !== undefined ? modelData[1] : "-"
                                color: "#2E3047"
                                font.family: page.fontFamily
                                font.pixelSize: 14
                                font.bold: true
                            }
                            Text {
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: modelData[0]
                                color: "#9A93A6"
                                font.family: page.fontFamily
                                font.pixelSize: 11
                            }
                        }
                    }
                }
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
                        GradientStop { position: 0; color: readArea.pressed ? "#E0603A" : "#FF7043" }
                        GradientStop { position: 1; color: "#F06292" }
                    }
                    Text {
                        anchors.centerIn: parent
                        text: page.home && page.home.hasReadHistory ? "继续阅读" : "开始阅读"
                        color: "white"
                        font.family: page.fontFamily
                        font.pixelSize: 17
                        font.bold: true
                    }
                    MouseArea {
                        id: readArea
                        anchors.fill: parent
                        onClicked: page.home.readComicBtnClick()
                    }
                }
                Rectangle {
                    objectName: "bookshelfButton"
                    width: 120; height: 46
                    radius: 23
                    color: shelfArea.pressed ? "#FFE3D6" : "white"
                    border.color: "#FF7043"
                    border.width: 2
                    Text {
                        anchors.centerIn: parent
                        text: page.home && page.home.inBookshelf ? "已在书架" : "加入书架"
                        color: "#E0603A"
                        font.family: page.fontFamily
                        font.pixelSize: 16
                        font.bold: true
                    }
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
            color: "#6B6477"
            font.family: page.fontFamily
            font.pixelSize: 15
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
            color: closeArea.pressed ? "#3A3C58" : "#2E3047"
            Text {
                anchors.centerIn: parent
                text: "返回"
                color: "white"
                font.family: page.fontFamily
                font.pixelSize: 16
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
                color: "#2E3047"
                font.family: page.fontFamily
                font.pixelSize: 18
                font.bold: true
            }
            Text {
                anchors.right: sortButton.left
                anchors.rightMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                text: page.head.lastUpdateChapterName ? "最新：" + page.head.lastUpdateChapterName : ""
                color: "#9A93A6"
                font.family: page.fontFamily
                font.pixelSize: 13
            }
            Rectangle {
                id: sortButton
                objectName: "chapterSortButton"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: 88; height: 32
                radius: 16
                color: sortArea.pressed ? "#FFE3D6" : "#FFF1EB"
                Text {
                    anchors.centerIn: parent
                    text: page.home && !page.home.chapterView.ascending ? "倒序 ↑" : "正序 ↓"
                    color: "#E0603A"
                    font.family: page.fontFamily
                    font.pixelSize: 14
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
                objectName: "chapter" + index
                readonly property string chapterId: model.chapterId
                width: chapters.width
                height: 45
                color: rowArea.pressed ? "#FFF0E6" : (index % 2 ? "#FFFCF8" : "#FFF7F1")
                radius: 8
                Text {
                    x: 16
                    width: parent.width - x - meta.width - markBox.width - 40
                    anchors.verticalCenter: parent.verticalCenter
                    text: model.name
                    color: "#2E3047"
                    font.family: page.fontFamily
                    font.pixelSize: 15
                    elide: Text.ElideRight
                }
                Rectangle {
                    id: markBox
                    anchors.right: meta.left
                    anchors.rightMargin: 14
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
                        font.family: page.fontFamily
                        font.pixelSize: 12
                    }
                }
                Text {
                    id: meta
                    anchors.right: parent.right
                    anchors.rightMargin: 16
                    anchors.verticalCenter: parent.verticalCenter
                    text: model.sizeText
                    color: "#9A93A6"
                    font.family: page.fontFamily
                    font.pixelSize: 13
                }
                MouseArea {
                    id: rowArea
                    anchors.fill: parent
                    onClicked: page.home.readCurrentChapterAtRow(index)
                }
            }
        }
    }

    // --- Waiting and failure ---
    Rectangle {
        objectName: "detailWait"
        anchors.fill: parent
        radius: 18
        color: "#F2FFFCF8"
        visible: page.home && page.home.state === 0 && !page.home.hasComicInfo
        Column {
            anchors.centerIn: parent
            spacing: 16
            Rectangle {
                id: waitRing
                anchors.horizontalCenter: parent.horizontalCenter
                width: 44; height: 44; radius: 22
                color: "transparent"
                border.color: "#FF7043"
                border.width: 4
                Rectangle { width: 12; height: 12; radius: 6; color: "#FFFCF8"; x: 30; y: 2 }
                // Turns only while it is on screen: a running animation draws
                // frames even under a hidden item.
                RotationAnimation on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite; running: waitRing.visible }
            }
            Text {
                text: page.home ? page.home.waitText : ""
                color: "#6B6477"
                font.family: page.fontFamily
                font.pixelSize: 16
            }
        }
    }
    Rectangle {
        objectName: "detailError"
        anchors.fill: parent
        radius: 18
        color: "#F2FFFCF8"
        visible: page.home && page.home.state === 2 && !page.home.hasComicInfo
        Column {
            anchors.centerIn: parent
            spacing: 14
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "请求服务器失败，点击屏幕重新请求哦~！"
                color: "#6B6477"
                font.family: page.fontFamily
                font.pixelSize: 17
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "返回"
                color: "#E0603A"
                font.family: page.fontFamily
                font.pixelSize: 15
                MouseArea { anchors.fill: parent; anchors.margins: -10; onClicked: page.home.close() }
            }
        }
        MouseArea { anchors.fill: parent; z: -1; onClicked: page.home.beginRequestData() }
    }
}
