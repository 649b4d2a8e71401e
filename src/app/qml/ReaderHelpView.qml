pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// What the reader's tap zones and gestures do, drawn over the reading
// surface (`area`, in the view's coordinates; the whole view by default) on a
// shade over the whole view. In landscape reading the left and right edges
// scroll a tall page by one screen; elsewhere a tap shows or hides the menus.
// A tap anywhere closes the help (dismissed()).
Item {
    id: root
    property VORAReadHomePageViewController controller // the reader screen (screenState: 1 landscape)
    property string fontFamily: "Noto Sans CJK SC"
    property rect area: Qt.rect(0, 0, width, height)
    readonly property bool landscape: controller ? controller.screenState === 1 : area.width > area.height
    // The page view's edge zones are 200 points of a 1024-point-wide screen.
    readonly property real edge: landscape ? area.width * 200 / 1024 : 0
    signal dismissed()

    Rectangle {
        anchors.fill: parent
        color: Theme.helpShade
    }

    component Zone: Rectangle {
        id: zone
        property string title
        property string detail
        color: "transparent"
        border.color: Theme.helpBorder
        border.width: 2
        radius: 14
        Column {
            anchors.centerIn: parent
            width: parent.width - 24
            spacing: Theme.spacingSmall
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: zone.title
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontHeadline
                font.bold: true
                wrapMode: Text.WordWrap
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: zone.detail
                color: Theme.textOnDarkSecondary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontBody
                wrapMode: Text.WordWrap
            }
        }
    }

    Item {
        id: surface
        x: root.area.x
        y: root.area.y
        width: root.area.width
        height: root.area.height

        Zone {
            objectName: "helpZoneUp"
            visible: root.landscape
            x: 12; y: 12
            width: root.edge - 18
            height: surface.height - 24
            title: "向上滚动"
            detail: "长页面向上滚动一屏"
        }
        Zone {
            objectName: "helpZoneMenu"
            x: root.landscape ? root.edge + 6 : 12
            y: 12
            width: surface.width - 2 * x
            height: surface.height * 0.46
            title: "轻触：显示 / 隐藏菜单"
            detail: "菜单里有目录、书签、亮度、吐槽和横竖屏切换"
        }
        Zone {
            objectName: "helpZoneDown"
            visible: root.landscape
            x: surface.width - root.edge + 6; y: 12
            width: root.edge - 18
            height: surface.height - 24
            title: "向下滚动"
            detail: "长页面向下滚动一屏"
        }

        Column {
            objectName: "helpGestures"
            x: root.landscape ? root.edge + 30 : 36
            y: surface.height * 0.46 + 40
            width: surface.width - 2 * x
            spacing: 14
            HelpLine { gesture: "左右滑动"; effect: "翻到上一页 / 下一页" }
            HelpLine { gesture: "在第一页或最后一页继续滑动"; effect: "进入上一章 / 下一章" }
            HelpLine { gesture: "双击"; effect: "放大到触点附近；放大时双击还原" }
            HelpLine { gesture: "双指捏合"; effect: "缩放页面（0.6 – 1.64 倍）" }
            HelpLine { gesture: "拖动页码滑块"; effect: "快速跳到某一页" }
            HelpLine { gesture: "方向键、空格、翻页键"; effect: "翻页；Esc 返回" }
            Item { width: 1; height: 10 }
            Text {
                text: "点击任意位置关闭"
                color: Theme.textMuted
                font.family: root.fontFamily
                font.pixelSize: Theme.fontBody
            }
        }
    }

    MouseArea {
        objectName: "helpCloseButton"
        anchors.fill: parent
        onClicked: root.dismissed()
    }

    // One gesture and what it does.
    component HelpLine: Row {
        id: line
        property string gesture
        property string effect
        spacing: 16
        Rectangle {
            width: 10; height: 10; radius: 5
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accent
        }
        Text {
            text: line.gesture
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTitle
            font.bold: true
        }
        Text {
            text: line.effect
            color: Theme.textOnDarkSecondary
            font.family: root.fontFamily
            font.pixelSize: Theme.fontLarge
        }
    }
}
