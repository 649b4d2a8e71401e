pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The shared overlay layer: status-bar notices, loading views (100202),
// progress panels (19870319) and alerts, all fed by VORAOverlayLayer.
Item {
    id: root
    property VORAOverlayLayer overlay
    property string fontFamily

    component Spinner: Item {
        id: spinner
        width: 40; height: 40
        Repeater {
            model: 8
            delegate: Rectangle {
                id: dot
                required property int index
                x: 20 + 14 * Math.cos(dot.index * Math.PI / 4) - 4
                y: 20 + 14 * Math.sin(dot.index * Math.PI / 4) - 4
                width: 8; height: 8; radius: 4
                color: Theme.iconOnDark
                opacity: 0.25 + dot.index / 10
            }
        }
        RotationAnimator on rotation { from: 0; to: 360; duration: 1000; loops: Animation.Infinite; running: spinner.visible }
    }

    // Loading views.
    Repeater {
        model: root.overlay ? root.overlay.loadingViews : []
        delegate: Rectangle {
            id: loadingView
            required property var modelData
            objectName: "loading100202"
            anchors.centerIn: parent
            width: Math.max(180, label.implicitWidth + 48)
            height: 120
            radius: Theme.radiusButton
            color: Theme.noticeBackground
            Spinner { anchors.horizontalCenter: parent.horizontalCenter; y: 20 }
            Text {
                id: label
                anchors.horizontalCenter: parent.horizontalCenter
                y: 76
                text: loadingView.modelData.text
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontMedium
            }
        }
    }

    // The delegate's progress panels: blocking with a spinner, or text only.
    MouseArea {
        anchors.fill: parent
        visible: root.overlay && root.overlay.progressVisible && root.overlay.progressBlocking
    }
    Rectangle {
        objectName: "progress19870319"
        visible: root.overlay && root.overlay.progressVisible
        // In the middle of the window, where no bar lies (a low toast would sit on
        // the reader's dark bars and vanish there).
        anchors.centerIn: parent
        width: Math.max(200, progressText.implicitWidth + 56)
        height: root.overlay && root.overlay.progressBlocking ? 128 : 64
        radius: Theme.radiusButton
        color: Theme.hudBackground
        Spinner {
            visible: root.overlay && root.overlay.progressBlocking
            anchors.horizontalCenter: parent.horizontalCenter
            y: 22
        }
        Text {
            id: progressText
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 20
            text: root.overlay ? root.overlay.progressText : ""
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: root.overlay && root.overlay.progressBlocking ? 15 : 13
            font.bold: true
        }
    }

    // Status-bar notice.
    Rectangle {
        objectName: "notice"
        width: parent.width
        height: 34
        y: root.overlay && root.overlay.noticeVisible ? 0 : -height
        Behavior on y { NumberAnimation { duration: 250 } }
        color: Theme.popupBackground
        Text {
            anchors.centerIn: parent
            text: root.overlay ? root.overlay.noticeText : ""
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontBody
        }
    }

    // Alerts: the oldest one shows; the others wait underneath.
    Rectangle {
        anchors.fill: parent
        color: Theme.modalShade
        visible: root.overlay && root.overlay.alerts.length > 0
        MouseArea { anchors.fill: parent }
        AlertBox {
            objectName: "alertBox"
            anchors.centerIn: parent
            alert: root.overlay && root.overlay.alerts.length > 0 ? root.overlay.alerts[0] : null
            fontFamily: root.fontFamily
            onAnswered: (buttonIndex) => root.overlay.answerAlert(alert.alertId, buttonIndex)
        }
    }
}
