pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The side panel of updated comics: slides in from the right over the shell
// when the bookshelf badge is tapped; a row opens the comic's detail page, a
// tap beside the panel or on "关闭" closes it (at once: no slide out).
Item {
    id: root
    property VORAGengXinView gengXin
    property string fontFamily
    readonly property bool open: root.gengXin !== null && root.gengXin.open

    MouseArea {
        objectName: "gengXinOutside"
        anchors.fill: parent
        enabled: root.open
        onClicked: root.gengXin.closePanel()
    }

    Rectangle {
        id: panel
        objectName: "gengXinPanel"
        width: Math.min(380, root.width - 40)
        height: root.height
        x: root.open ? root.width - width : root.width
        // Shown only while open: closed, nothing of it takes a click.
        visible: root.open
        color: Theme.surface
        Behavior on x { NumberAnimation { duration: 300; easing.type: Easing.OutCubic } }
        Rectangle { width: 1; height: parent.height; color: Theme.surfaceBorder }
        // Taps on the panel stay on it.
        MouseArea { anchors.fill: parent }

        Rectangle {
            id: top
            width: parent.width
            height: 64
            color: Theme.barBackground
            Text {
                anchors.left: parent.left
                anchors.leftMargin: 24
                anchors.verticalCenter: parent.verticalCenter
                text: "书架更新 (" + (root.gengXin ? root.gengXin.count : 0) + ")"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontDisplay
                font.bold: true
            }
            Text {
                objectName: "closeGengXin"
                anchors.right: parent.right
                anchors.rightMargin: 22
                anchors.verticalCenter: parent.verticalCenter
                text: "关闭"
                color: Theme.accentOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontTitle
                MouseArea {
                    anchors.fill: parent
                    anchors.margins: -10
                    onClicked: root.gengXin.closePanel()
                }
            }
        }

        ListView {
            anchors.top: top.bottom
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Theme.spacing
            spacing: Theme.spacingSmall
            clip: true
            model: root.gengXin
            delegate: Rectangle {
                id: row
                required property int index
                required property string comicName
                required property string coverUrl
                required property string latestChapterName
                objectName: "gengXinRow"
                width: ListView.view.width
                height: 96
                radius: Theme.radiusCard
                color: rowArea.pressed ? Theme.cardPressed : Theme.card
                border.color: Theme.cardBorder

                Image {
                    id: placeholder
                    x: Theme.spacingSmall
                    y: Theme.spacingSmall
                    width: 60
                    height: row.height - 2 * Theme.spacingSmall
                    source: "image://quorin/art/dcoverdefault.png"
                    visible: cover.status !== Image.Ready
                    fillMode: Image.PreserveAspectCrop
                    asynchronous: true
                }
                Image {
                    id: cover
                    anchors.fill: placeholder
                    source: row.coverUrl !== "" ? "image://quorin/net/" + encodeURIComponent(row.coverUrl) : ""
                    sourceSize.width: 120
                    fillMode: Image.PreserveAspectCrop
                    asynchronous: true
                }
                Column {
                    anchors.left: placeholder.right
                    anchors.leftMargin: Theme.spacing
                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spacing
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 6
                    Text {
                        width: parent.width
                        text: row.comicName
                        elide: Text.ElideRight
                        color: Theme.textPrimary
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontLarge
                        font.bold: true
                    }
                    Text {
                        width: parent.width
                        text: "更新至 " + row.latestChapterName
                        elide: Text.ElideRight
                        color: Theme.accentText
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontBody
                    }
                }
                MouseArea {
                    id: rowArea
                    anchors.fill: parent
                    onClicked: root.gengXin.openRow(row.index)
                }
            }
        }
    }
}
