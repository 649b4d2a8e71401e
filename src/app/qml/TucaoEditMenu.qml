pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// One editing act (VORATuCaoEditManager) on its layer over the screen: the
// tucao's rectangle, which the finger drags and resizes by its corner handle,
// and a circular menu beside it with confirm, cancel and delete. The menu
// collapses when the act ends (hideEditTuCaoView); the manager removes the
// layer 0.2 s later.
Item {
    id: root
    property VORATuCaoEditManager edit
    property string fontFamily
    readonly property rect box: edit ? edit.editRect : Qt.rect(0, 0, 0, 0)
    readonly property bool expanded: edit !== null && edit.menuExpanded
    readonly property real menuRadius: 62

    width: edit ? edit.tucaoEditViewSize.width : (parent ? parent.width : 0)
    height: edit ? edit.tucaoEditViewSize.height : (parent ? parent.height : 0)
    visible: edit !== null && !edit.isRemoved

    Rectangle {
        anchors.fill: parent
        color: Theme.editShade
        opacity: root.expanded ? 0.25 : 0
        Behavior on opacity { NumberAnimation { duration: 200 } }
    }
    MouseArea { anchors.fill: parent } // the page under the layer stays still

    // --- The rectangle ---
    Rectangle {
        id: frame
        objectName: "tucaoEditFrame"
        x: root.box.x
        y: root.box.y
        width: root.box.width
        height: root.box.height
        color: Qt.rgba(1.0, 235 / 255, 205 / 255, 0.9)
        border.color: Theme.accent
        border.width: 2
        radius: 3
        opacity: root.expanded ? 1 : 0.6

        Text {
            anchors.fill: parent
            anchors.margins: 3
            text: root.edit ? root.edit.tucaoStr : ""
            color: Theme.tucaoText
            font.family: root.fontFamily
            font.pointSize: 11
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            maximumLineCount: 20
            elide: Text.ElideRight
        }

        MouseArea {
            objectName: "tucaoEditMove"
            anchors.fill: parent
            property point last
            onPressed: (mouse) => last = mapToItem(root, mouse.x, mouse.y)
            onPositionChanged: (mouse) => {
                const p = mapToItem(root, mouse.x, mouse.y);
                root.edit.moveBy(p.x - last.x, p.y - last.y);
                last = p;
            }
        }

        // Resize handle at the bottom-right corner.
        Rectangle {
            objectName: "tucaoEditResize"
            x: parent.width - width / 2
            y: parent.height - height / 2
            width: 22; height: 22; radius: 11
            color: Theme.accent
            border.color: Theme.iconOnDark
            border.width: 2
            Rectangle { anchors.centerIn: parent; width: 8; height: 8; radius: 4; color: Theme.iconOnDark }
            MouseArea {
                anchors.fill: parent
                anchors.margins: -10
                property point last
                onPressed: (mouse) => last = mapToItem(root, mouse.x, mouse.y)
                onPositionChanged: (mouse) => {
                    const p = mapToItem(root, mouse.x, mouse.y);
                    root.edit.resizeBy(p.x - last.x, p.y - last.y);
                    last = p;
                }
            }
        }
    }

    // --- The circular menu ---
    Item {
        id: menu
        objectName: "tucaoEditMenu"
        width: 2 * root.menuRadius + 56
        height: width
        // Beside the rectangle, on the side with room, kept on the layer.
        readonly property bool onRight: root.box.x + root.box.width + width + 12 <= root.width
        x: Math.max(0, Math.min(root.width - width,
                                onRight ? root.box.x + root.box.width + 12 : root.box.x - width - 12))
        y: Math.max(0, Math.min(root.height - height, root.box.y + root.box.height / 2 - height / 2))
        scale: root.expanded ? 1 : 0.2
        opacity: root.expanded ? 1 : 0
        Behavior on scale { NumberAnimation { duration: 200; easing.type: Easing.OutBack } }
        Behavior on opacity { NumberAnimation { duration: 200 } }

        Rectangle {
            anchors.centerIn: parent
            width: 2 * root.menuRadius + 10
            height: width
            radius: width / 2
            color: Theme.readerMenuBackground
        }
        Rectangle {
            anchors.centerIn: parent
            width: 30; height: 30; radius: 15
            color: Theme.accent
            Text {
                anchors.centerIn: parent
                text: "吐"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontBody
                font.bold: true
            }
        }

        MenuItem {
            objectName: "tucaoEditConfirm"
            label: "确定"
            glyph: "confirm"
            angle: -90
            onActivated: root.edit.confirmPubTuCao()
        }
        MenuItem {
            objectName: "tucaoEditCancel"
            label: "取消"
            glyph: "cancel"
            angle: 30
            onActivated: root.edit.cancleEditTuCao()
        }
        MenuItem {
            objectName: "tucaoEditDelete"
            label: "删除"
            glyph: "delete"
            angle: 150
            onActivated: root.edit.deleteTuCaoView()
        }
    }

    // One entry of the circular menu: its glyph drawn above, its name below, at
    // `angle` degrees round the centre.
    component MenuItem: Rectangle {
        id: menuItem
        property string label
        property string glyph
        property real angle
        signal activated()
        readonly property real rad: menuItem.angle * Math.PI / 180
        x: menu.width / 2 + Math.cos(menuItem.rad) * root.menuRadius - width / 2
        y: menu.height / 2 + Math.sin(menuItem.rad) * root.menuRadius - height / 2
        width: 54; height: 54; radius: 27
        color: itemArea.pressed ? Theme.accentPressed : (menuItem.glyph === "delete" ? Theme.danger : Theme.accent)
        border.color: Theme.iconOnDark
        border.width: 2
        Canvas {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 8
            width: 22; height: 22
            onPaint: {
                const c = getContext("2d");
                c.reset();
                c.strokeStyle = Theme.iconOnDark;
                c.lineWidth = 2.6;
                c.lineCap = "round";
                c.lineJoin = "round";
                c.beginPath();
                if (menuItem.glyph === "confirm") {
                    c.moveTo(3, 11); c.lineTo(9, 17); c.lineTo(19, 5);
                } else if (menuItem.glyph === "cancel") {
                    c.moveTo(5, 5); c.lineTo(17, 17); c.moveTo(17, 5); c.lineTo(5, 17);
                } else {
                    c.moveTo(3, 6); c.lineTo(19, 6);
                    c.moveTo(8, 6); c.lineTo(8, 3); c.lineTo(14, 3); c.lineTo(14, 6);
                    c.moveTo(5, 6); c.lineTo(6, 20); c.lineTo(16, 20); c.lineTo(17, 6);
                }
                c.stroke();
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 32
            text: menuItem.label
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTiny
        }
        MouseArea {
            id: itemArea
            anchors.fill: parent
            enabled: root.expanded
            onClicked: menuItem.activated()
        }
    }
}
