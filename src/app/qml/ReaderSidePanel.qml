import QtQuick
import Quorin

// The frame of the reader's side panels (chapters, bookmarks): a full-screen
// dimming button, mengbanBtn, whose tap closes the panel, and the panel itself
// sliding in from the right edge. When the panel's VORAReaderSidePanel starts
// closing, the panel slides out to x = closedX (or the window's edge when the
// window is wider) in slideDuration ms; the object then asks the reader screen
// to remove it.
Item {
    id: frame
    property VORAReaderSidePanel sidePanel
    property int panelWidth: 420
    default property alias content: body.data
    readonly property alias panel: body
    readonly property int duration: sidePanel ? sidePanel.slideDuration : 350

    Rectangle {
        id: mengban
        objectName: "mengbanBtn"
        anchors.fill: parent
        color: Theme.barBackground
        opacity: frame.sidePanel && frame.sidePanel.closing ? 0 : 0.45
        Behavior on opacity { NumberAnimation { duration: frame.duration } }
        MouseArea {
            anchors.fill: parent
            enabled: frame.sidePanel ? frame.sidePanel.mengbanEnabled : false
            onClicked: frame.sidePanel.mengbanBtnClick()
        }
    }

    Rectangle {
        id: body
        objectName: "sidePanel"
        width: Math.min(frame.panelWidth, frame.width)
        height: frame.height
        x: frame.width
        color: Theme.surface
        clip: true
        MouseArea { anchors.fill: parent } // the dimming button lies underneath
        Rectangle { // the shadow along the left edge
            width: 6
            height: parent.height
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: Theme.panelShadow }
                GradientStop { position: 1; color: Theme.panelShadowEnd }
            }
        }
    }

    NumberAnimation {
        id: slideIn
        target: body
        property: "x"
        from: frame.width
        to: frame.width - body.width
        duration: frame.duration
        easing.type: Easing.OutCubic
        // Resting: follow the window when it turns.
        onFinished: body.x = Qt.binding(function() { return frame.width - body.width })
    }
    NumberAnimation {
        id: slideOut
        target: body
        property: "x"
        to: Math.max(frame.sidePanel ? frame.sidePanel.closedX : 1024, frame.width)
        duration: frame.duration
        easing.type: Easing.InCubic
    }
    Connections {
        target: frame.sidePanel
        function onClosingChanged() {
            if (frame.sidePanel.closing) {
                slideIn.stop()
                slideOut.start()
            }
        }
    }
    Component.onCompleted: slideIn.start()
}
