pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// Under a form: its message (the site's refusal, a check that failed, a
// confirmation) and, only while a call runs, a turning mark. Nothing moves
// while the form is idle.
Item {
    id: status
    property string message
    property bool busy: false
    property bool good: false
    property string fontFamily

    implicitHeight: Math.max(text.implicitHeight, busy ? 24 : 0)

    Text {
        id: text
        objectName: "formMessage"
        width: parent.width - (status.busy ? 32 : 0)
        wrapMode: Text.WordWrap
        text: status.message
        color: status.good ? Theme.textSecondary : Theme.danger
        font.family: status.fontFamily
        font.pixelSize: Theme.fontBody
    }
    Item {
        objectName: "formBusy"
        anchors.right: parent.right
        width: 24
        height: 24
        visible: status.busy
        Repeater {
            model: 8
            Rectangle {
                required property int index
                width: 4
                height: 4
                radius: 2
                color: Theme.accent
                opacity: 0.25 + index * 0.1
                x: 10 + 9 * Math.cos(index * Math.PI / 4)
                y: 10 + 9 * Math.sin(index * Math.PI / 4)
            }
        }
        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: 900
            loops: Animation.Infinite
            running: status.busy
        }
    }
}
