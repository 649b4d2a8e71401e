import QtQuick
import Quorin

Item {
    id: row
    property string title
    property bool checked
    property string fontFamily
    signal toggled(bool on)

    height: 52
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        color: Theme.textPrimary
        font.family: row.fontFamily
        font.pixelSize: Theme.fontLarge
    }
    Rectangle {
        objectName: "switch"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 52; height: 30
        radius: 15
        color: row.checked ? Theme.accent : Theme.switchOff
        Behavior on color { ColorAnimation { duration: 150 } }
        Rectangle {
            width: 26; height: 26
            radius: 13
            y: 2
            x: row.checked ? parent.width - width - 2 : 2
            color: Theme.card
            Behavior on x { NumberAnimation { duration: 150 } }
        }
    }
    Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.cardBorder }
    MouseArea {
        anchors.fill: parent
        onClicked: row.toggled(!row.checked)
    }
}
