import QtQuick

Rectangle {
    id: rail
    property bool landscape: true
    property string fontFamily

    gradient: Gradient {
        orientation: rail.landscape ? Gradient.Vertical : Gradient.Horizontal
        GradientStop { position: 0; color: "#2E3047" }
        GradientStop { position: 1; color: "#3F3D56" }
    }

    Image {
        id: logo
        visible: rail.landscape
        source: "image://quorin/art/applogo.png"
        width: 60; height: 60
        x: (rail.width - width) / 2
        y: 18
        asynchronous: true
    }
    Text {
        visible: rail.landscape
        anchors.top: logo.bottom
        anchors.topMargin: 2
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Quorin"
        color: "#FFB199"
        font.family: rail.fontFamily
        font.pixelSize: 13
        font.bold: true
    }

    Grid {
        id: buttons
        columns: rail.landscape ? 1 : rootController.buttons.length
        spacing: rail.landscape ? 12 : 40
        x: rail.landscape ? (rail.width - width) / 2 : (rail.width - width) / 2
        y: rail.landscape ? 118 : (rail.height - height) / 2

        Repeater {
            model: rootController.buttons
            delegate: Rectangle {
                id: button
                objectName: "button" + modelData.tag
                readonly property bool current: rootController.currentTag === modelData.tag
                                                || (modelData.tag === 108 && rootController.settingsOpen)
                width: 72; height: rail.landscape ? 72 : 60
                radius: 16
                color: current ? "#FF7043" : (area.pressed ? "#55FFFFFF" : "transparent")
                Behavior on color { ColorAnimation { duration: 150 } }
                Image {
                    id: icon
                    source: "image://quorin/art/" + modelData.icon
                    width: rail.landscape ? 32 : 28; height: width
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: rail.landscape ? 10 : 6
                    asynchronous: true
                }
                Text {
                    anchors.top: icon.bottom
                    anchors.topMargin: 4
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: modelData.title
                    color: "white"
                    font.family: rail.fontFamily
                    font.pixelSize: 14
                    font.bold: button.current
                }
                MouseArea {
                    id: area
                    anchors.fill: parent
                    onClicked: rootController.switchView(modelData.tag)
                }
            }
        }
    }
}
