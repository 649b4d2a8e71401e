import QtQuick

// One alert: title, message and two or three buttons; the answer goes back
// to the layer with the button index.
Rectangle {
    id: box
    property var alert
    property string fontFamily
    signal answered(int buttonIndex)

    width: 420
    height: content.height + 56
    radius: 18
    color: "white"

    Column {
        id: content
        y: 26
        width: parent.width
        spacing: 12
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: box.alert ? box.alert.title : ""
            visible: text !== ""
            color: "#2E3047"
            font.family: box.fontFamily
            font.pixelSize: 20
            font.bold: true
        }
        Text {
            objectName: "alertMessage"
            x: 24
            width: parent.width - 48
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: box.alert ? box.alert.message : ""
            color: "#5A5468"
            font.family: box.fontFamily
            font.pixelSize: 16
        }
        Item { width: 1; height: 6 }
        Row {
            x: 20
            spacing: 12
            Repeater {
                model: box.alert ? box.alert.buttons : []
                delegate: Rectangle {
                    objectName: "alertButton" + index
                    width: (box.width - 40 - 12 * (box.alert.buttons.length - 1)) / box.alert.buttons.length
                    height: 46
                    radius: 23
                    color: index === 0 ? (area.pressed ? "#E0603A" : "#FF7043") : (area.pressed ? "#E4DED8" : "#F1ECE7")
                    Text {
                        anchors.centerIn: parent
                        text: modelData
                        color: index === 0 ? "white" : "#2E3047"
                        font.family: box.fontFamily
                        font.pixelSize: 16
                        font.bold: index === 0
                    }
                    MouseArea {
                        id: area
                        anchors.fill: parent
                        onClicked: box.answered(index)
                    }
                }
            }
        }
    }
}
