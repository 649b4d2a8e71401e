import QtQuick
import Quorin

// One tucao over the page (TucaoView): a cream label at 80 % opacity with the
// comment in black 11 pt type, centred, at most 20 lines. It comes in 0.2 s
// after it is placed. Only one's own tucao takes touches: a long press asks
// for the edit panel (playback.longPressTucao posts "PopUpTucaoEditView");
// anybody else's lets every touch through to the page.
Item {
    id: root
    property string content
    property bool isOwn: false
    property int row: -1
    property VORATucaoPlayback playback
    property string fontFamily

    Rectangle {
        id: label
        objectName: "tucaoLabel"
        anchors.fill: parent
        color: Qt.rgba(1.0, 235 / 255, 205 / 255, 0.8)
        radius: 3
        border.width: root.isOwn ? 1 : 0
        border.color: Theme.accent
        opacity: 0
        scale: 0.6

        Text {
            objectName: "tucaoText"
            anchors.fill: parent
            anchors.margins: 2
            text: root.content
            color: Theme.tucaoText
            font.family: root.fontFamily
            font.pointSize: 11
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            maximumLineCount: 20
            elide: Text.ElideRight
        }
    }

    SequentialAnimation {
        id: appear
        PauseAnimation { duration: 200 }
        ParallelAnimation {
            NumberAnimation { target: label; property: "opacity"; to: 1; duration: 260; easing.type: Easing.OutCubic }
            NumberAnimation { target: label; property: "scale"; to: 1; duration: 260; easing.type: Easing.OutBack }
        }
    }
    Component.onCompleted: appear.start()

    MouseArea {
        objectName: "tucaoLongPress"
        anchors.fill: parent
        enabled: root.isOwn
        visible: root.isOwn
        pressAndHoldInterval: 600
        onPressAndHold: if (root.playback) root.playback.longPressTucao(root.row, root)
    }
}
