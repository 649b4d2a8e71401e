pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The reader's menu bars (VORAReadHomePageViewController): at the top the way
// back, the comic and chapter, and the entries (add bookmark, bookmarks,
// chapters, brightness, help, read mode); at the bottom the page label, the
// page slider (it turns the page when let go) and the tucao button. They
// slide in and out with menuShown.
Item {
    id: root
    property VORAReadHomePageViewController reader
    property string fontFamily
    readonly property bool shown: reader !== null && reader.menuShown
    readonly property bool landscape: width > height
    // Portrait reading (the read mode, not the window's shape).
    readonly property bool portraitReading: reader !== null && reader.verticalScreen
    readonly property real barHeight: 70
    // How far the bars are in: only showing and hiding them slides; a resize
    // (the first layout included) puts them in place at once.
    property real reveal: shown ? 1 : 0
    Behavior on reveal { NumberAnimation { duration: 200; easing.type: Easing.OutCubic } }
    // The page the slider's thumb stands on while it is dragged.
    property int previewPage: -1

    // --- Top bar ---
    Rectangle {
        id: topBar
        objectName: "readerTopBar"
        width: parent.width
        height: root.barHeight
        y: -(height + 4) * (1 - root.reveal)
        visible: root.reveal > 0
        color: Theme.readerBarBackground
        MouseArea { anchors.fill: parent } // taps on the bar stay on the bar
        Rectangle { width: parent.width; height: 2; anchors.bottom: parent.bottom; color: Theme.accent; opacity: 0.8 }

        Row {
            x: 8
            BarButton {
                objectName: "readerBack"
                icon: "readback.png"
                label: "返回"
                onActivated: root.reader.backPreviousPage()
            }
        }

        Text {
            objectName: "readerTitle"
            x: 80
            width: entries.x - x - 12
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: root.reader ? root.reader.title : ""
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontHeadingLarge
            font.bold: true
            elide: Text.ElideRight
        }

        Row {
            id: entries
            anchors.right: parent.right
            anchors.rightMargin: 8
            spacing: root.landscape ? 6 : 0
            BarButton {
                objectName: "readerAddBookmark"
                icon: "readbookmarkadd.png"
                label: "加书签"
                onActivated: root.reader.addBookmark()
            }
            BarButton {
                objectName: "readerBookmarks"
                icon: "readbookmarklist.png"
                label: "书签"
                onActivated: root.reader.popUpBookmarkView()
            }
            BarButton {
                objectName: "readerChapters"
                icon: "readchapterlist.png"
                label: "目录"
                onActivated: root.reader.popUpChapterView()
            }
            BarButton {
                objectName: "readerLuminance"
                icon: "readluminance.png"
                label: "亮度"
                onActivated: root.reader.popUpLuminanceView()
            }
            BarButton {
                objectName: "readerHelp"
                icon: "readhelp.png"
                label: "帮助"
                onActivated: root.reader.popUpHelpView()
            }
            // The read mode entry offers the other mode.
            BarButton {
                objectName: "readerReadMode"
                icon: root.portraitReading ? "readmodelandscape.png" : "readmodeportrait.png"
                label: root.portraitReading ? "横屏" : "竖屏"
                onActivated: root.reader.swtichScreen()
            }
        }
    }

    // One entry of the bars: its picture above, its name below.
    component BarButton: Item {
        id: barItem
        property string icon
        property string label
        signal activated()
        width: 62
        height: 70
        Rectangle {
            anchors.centerIn: parent
            width: 56; height: 58; radius: Theme.radiusCard
            color: area.pressed ? Theme.lineOnDark : "transparent"
        }
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 9
            width: 30; height: 30
            source: "image://quorin/art/" + barItem.icon
            sourceSize.width: 60
            sourceSize.height: 60
            asynchronous: true
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 44
            text: barItem.label
            color: Theme.readerBarText
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTiny
        }
        MouseArea {
            id: area
            anchors.fill: parent
            onClicked: barItem.activated()
        }
    }

    // --- Bottom bar ---
    Rectangle {
        id: bottomBar
        objectName: "readerBottomBar"
        width: parent.width
        height: root.barHeight
        y: parent.height - height + (height + 4) * (1 - root.reveal)
        visible: root.reveal > 0
        color: Theme.readerBarBackground
        MouseArea { anchors.fill: parent }
        Rectangle { width: parent.width; height: 1; color: Theme.lineOnDark }

        Text {
            objectName: "readerPageLabel"
            x: 20
            width: 92
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: root.reader ? root.reader.pageLabel : ""
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontHeading
            font.bold: true
        }

        Item {
            id: slider
            objectName: "readerSlider"
            x: 120
            width: parent.width - x - 24
            height: parent.height
            enabled: root.reader !== null && root.reader.sliderEnabled && root.reader.sliderMaximum > 0
            opacity: enabled ? 1 : 0.4
            readonly property int maximum: root.reader ? root.reader.sliderMaximum : 0
            // The value the thumb shows: the page, or the finger while dragging.
            property real value: dragging ? dragValue : (root.reader ? root.reader.currentPageIndex : 0)
            property real dragValue: 0
            property bool dragging: false
            readonly property real fraction: maximum > 0 ? Math.max(0, Math.min(1, value / maximum)) : 0

            function valueAt(px) {
                return Math.max(0, Math.min(1, (px - track.x) / track.width)) * maximum;
            }

            Rectangle {
                id: track
                x: 14
                width: parent.width - 28
                height: 6
                radius: 3
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.pressedOnDark
                Rectangle {
                    width: parent.width * slider.fraction
                    height: parent.height
                    radius: 3
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0; color: Theme.accent }
                        GradientStop { position: 1; color: Theme.accentGradientEnd }
                    }
                }
            }
            Rectangle {
                id: thumb
                objectName: "readerSliderThumb"
                width: 26; height: 26; radius: 13
                x: track.x + track.width * slider.fraction - width / 2
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.card
                border.color: Theme.accent
                border.width: 3
            }
            Rectangle {
                visible: slider.dragging
                width: 86; height: 34; radius: 10
                x: thumb.x + thumb.width / 2 - width / 2
                y: thumb.y - height - 10
                color: Theme.accent
                Text {
                    anchors.centerIn: parent
                    text: "第" + (root.previewPage + 1) + "页"
                    color: Theme.textOnDark
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontMedium
                    font.bold: true
                }
            }
            MouseArea {
                anchors.fill: parent
                preventStealing: true
                onPressed: (mouse) => {
                    slider.dragValue = slider.valueAt(mouse.x);
                    slider.dragging = true;
                    root.previewPage = Math.min(slider.maximum, Math.floor(slider.dragValue + 0.5));
                }
                onPositionChanged: (mouse) => {
                    slider.dragValue = slider.valueAt(mouse.x);
                    root.previewPage = Math.min(slider.maximum, Math.floor(slider.dragValue + 0.5));
                }
                onReleased: (mouse) => {
                    slider.dragValue = slider.valueAt(mouse.x);
                    slider.dragging = false;
                    root.reader.quickTurnPage(slider.dragValue);
                }
                onCanceled: slider.dragging = false
            }
        }
    }
}
