import QtQuick
import Quorin

// A pill button of the wallet's screens: filled with the accent when primary,
// greyed while disabled.
Rectangle {
    id: button
    property string text
    property bool primary: false
    property string fontFamily
    signal clicked()

    height: 50
    radius: height / 2
    opacity: enabled ? 1 : 0.45
    color: button.primary ? (area.pressed ? Theme.accentPressed : Theme.accent)
                          : (area.pressed ? Theme.buttonNeutralPressed : Theme.buttonNeutral)
    Text {
        anchors.centerIn: parent
        text: button.text
        color: button.primary ? Theme.textOnDark : Theme.textPrimary
        font.family: button.fontFamily
        font.pixelSize: Theme.fontLarge
        font.bold: button.primary
    }
    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: button.clicked()
    }
}
