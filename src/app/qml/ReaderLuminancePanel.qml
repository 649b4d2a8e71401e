pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The brightness panel (VORAAdjustLuminanceView): a 351 x 69 panel with a
// slider over a full-screen transparent button that closes it. Moving the
// slider darkens or lightens the reader's black layer at once.
Item {
    id: root
    property VORAAdjustLuminanceView manager
    property string fontFamily: "Noto Sans CJK SC"
    // Where the panel sits; the reader screen puts it by its menu entry.
    property real panelX: (width - panel.width) / 2
    property real panelY: (height - panel.height) / 2
    readonly property real panelWidth: panel.width

    MouseArea {
        objectName: "luminanceCloseButton"
        anchors.fill: parent
        onClicked: root.manager.close()
    }

    Rectangle {
        id: panel
        objectName: "luminancePanel"
        x: root.panelX
        y: root.panelY
        width: root.manager ? root.manager.panelWidth : 351
        height: root.manager ? root.manager.panelHeight : 69
        radius: Theme.radiusButton
        color: Theme.popupBackground
        MouseArea { anchors.fill: parent } // taps on the panel keep it open

        component Sun: Item {
            id: sun
            property real size: 20
            width: size; height: size
            Repeater {
                model: 8
                Rectangle {
                    id: ray
                    required property int index
                    x: sun.size / 2 - 1 + Math.cos(ray.index * Math.PI / 4) * sun.size * 0.42 - width / 2 + 1
                    y: sun.size / 2 + Math.sin(ray.index * Math.PI / 4) * sun.size * 0.42 - height / 2
                    width: Math.max(2, sun.size / 8); height: width; radius: width / 2
                    color: Theme.highlight
                }
            }
            Rectangle {
                anchors.centerIn: parent
                width: sun.size * 0.5; height: width; radius: width / 2
                color: Theme.highlight
            }
        }

        Sun { id: dim; size: 16; x: 18; anchors.verticalCenter: parent.verticalCenter; opacity: 0.7 }
        Sun { id: bright; size: 26; anchors.right: parent.right; anchors.rightMargin: 14; anchors.verticalCenter: parent.verticalCenter }

        Item {
            id: track
            objectName: "luminanceSlider"
            anchors.left: dim.right
            anchors.right: bright.left
            anchors.leftMargin: 16
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            height: 40
            readonly property real value: root.manager ? root.manager.sliderValue : 1

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width
                height: 6
                radius: 3
                color: Theme.barButton
                Rectangle {
                    width: parent.width * track.value
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
                objectName: "luminanceHandle"
                x: track.value * (track.width - width)
                anchors.verticalCenter: parent.verticalCenter
                width: 26; height: 26; radius: 13
                color: Theme.card
                border.color: slideArea.pressed ? Theme.accent : Theme.surfaceBorder
                border.width: 2
            }
            MouseArea {
                id: slideArea
                anchors.fill: parent
                preventStealing: true
                function follow(mouse) {
                    root.manager.adjustLuminance(Math.max(0, Math.min(1, (mouse.x - 13) / Math.max(1, track.width - 26))))
                }
                onPressed: function(mouse) { follow(mouse) }
                onPositionChanged: function(mouse) { if (pressed) follow(mouse) }
            }
        }
    }
}
