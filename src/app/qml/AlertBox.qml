pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// One alert: title, message and two or three buttons; the answer goes back
// to the layer with the button index.
Rectangle {
    id: box
    property var alert
    property string fontFamily
    signal answered(int buttonIndex)

    width: 420
    height: content.height + 56
    radius: Theme.radiusPanel
    color: Theme.card

    Column {
        id: content
        y: 26
        width: parent.width
        spacing: Theme.spacing
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: box.alert ? box.alert.title : ""
            visible: text !== ""
            color: Theme.textPrimary
            font.family: box.fontFamily
            font.pixelSize: Theme.fontHeadline
            font.bold: true
        }
        Text {
            objectName: "alertMessage"
            x: 24
            width: parent.width - 48
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: box.alert ? box.alert.message : ""
            color: Theme.textBody
            font.family: box.fontFamily
            font.pixelSize: Theme.fontLarge
        }
        Item { width: 1; height: 6 }
        Row {
            x: 20
            spacing: Theme.spacing
            Repeater {
                model: box.alert ? box.alert.buttons : []
                delegate: Rectangle {
                    id: button
                    required property int index
                    required property string modelData
                    objectName: "alertButton" + index
                    width: (box.width - 40 - 12 * (box.alert.buttons.length - 1)) / box.alert.buttons.length
                    height: 46
                    radius: 23
                    color: button.index === 0 ? (area.pressed ? Theme.accentPressed : Theme.accent) : (area.pressed ? Theme.buttonNeutralPressed : Theme.buttonNeutral)
                    Text {
                        anchors.centerIn: parent
                        text: button.modelData
                        color: button.index === 0 ? Theme.textOnDark : Theme.textPrimary
                        font.family: box.fontFamily
                        font.pixelSize: Theme.fontLarge
                        font.bold: button.index === 0
                    }
                    MouseArea {
                        id: area
                        anchors.fill: parent
                        onClicked: box.answered(button.index)
                    }
                }
            }
        }
    }
}
