import QtQuick
import Quorin

// A button of the user panel: filled with the accent (the form's main
// action) or plain, greyed while it cannot be pressed.
Rectangle {
    id: button
    property string text
    property string fontFamily
    property bool primary: true
    property bool active: true
    signal clicked()

    height: 44
    radius: height / 2
    opacity: active ? 1 : 0.5
    color: primary ? (area.pressed ? Theme.accentPressed : Theme.accent)
                   : (area.pressed ? Theme.buttonNeutralPressed : Theme.buttonNeutral)

    Text {
        anchors.centerIn: parent
        width: parent.width - 16
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: button.text
        color: button.primary ? Theme.textOnDark : Theme.textPrimary
        font.family: button.fontFamily
        font.pixelSize: Theme.fontMedium
        font.bold: button.primary
    }
    MouseArea {
        id: area
        anchors.fill: parent
        enabled: button.active
        onClicked: button.clicked()
    }
}
