pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The row of main buttons: a rail down the left side in landscape, a bar along
// the bottom in portrait. It scrolls when the window is too small to hold every
// button, so each one stays reachable.
Rectangle {
    id: rail
    property VORARootViewController rootController
    property bool landscape: true
    property string fontFamily
    readonly property int buttonCount: rail.rootController.buttons.length
    // Windows too short for every full-size button drop the emblem's name and
    // tighten the buttons (the full column needs 116 + 84 per button).
    readonly property bool compact: landscape ? height < 116 + 84 * buttonCount : width < 640

    gradient: Gradient {
        orientation: rail.landscape ? Gradient.Vertical : Gradient.Horizontal
        GradientStop { position: 0; color: Theme.barBackground }
        GradientStop { position: 1; color: Theme.barGradientEnd }
    }

    Image {
        id: logo
        visible: rail.landscape
        source: "image://quorin/art/applogo.png"
        width: rail.compact ? 44 : 60; height: width
        x: (rail.width - width) / 2
        y: rail.compact ? 10 : 18
        asynchronous: true
    }
    Text {
        id: brand
        visible: rail.landscape && !rail.compact
        anchors.top: logo.bottom
        anchors.topMargin: 2
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Quorin"
        color: Theme.accentOnDark
        font.family: rail.fontFamily
        font.pixelSize: Theme.fontSmall
        font.bold: true
    }

    Flickable {
        id: scroller
        objectName: "railScroller"
        y: rail.landscape ? (rail.compact ? logo.y + logo.height + 10 : 118) : 0
        width: rail.width
        height: rail.height - y
        contentWidth: rail.landscape ? width : buttons.x + buttons.width + buttons.barSpacing
        contentHeight: rail.landscape ? buttons.height + 10 : height
        flickableDirection: rail.landscape ? Flickable.VerticalFlick : Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        interactive: rail.landscape ? contentHeight > height : contentWidth > width
        clip: true

        Grid {
            id: buttons
            readonly property int buttonWidth: 72
            // In the bottom bar the buttons share the width out, never closer than 4.
            readonly property real barSpacing: Math.max(4, Math.min(40, (rail.width - rail.buttonCount * buttonWidth)
                                                                         / (rail.buttonCount + 1)))
            columns: rail.landscape ? 1 : rail.buttonCount
            spacing: rail.landscape ? (rail.compact ? 4 : 12) : barSpacing
            x: rail.landscape ? (rail.width - width) / 2 : Math.max(barSpacing, (rail.width - width) / 2)
            y: rail.landscape ? 0 : (rail.height - height) / 2

            Repeater {
                model: rail.rootController.buttons
                delegate: Rectangle {
                    id: button
                    required property var modelData
                    objectName: "button" + modelData.tag
                    readonly property bool current: rail.rootController.currentTag === button.modelData.tag
                                                    || (button.modelData.tag === 108 && rail.rootController.settingsOpen)
                                                    || (button.modelData.tag === 109 && rail.rootController.userViewOpen)
                    width: buttons.buttonWidth
                    height: rail.landscape ? (rail.compact ? 56 : 72) : 60
                    radius: Theme.radiusButton
                    color: button.current ? Theme.accent : (area.pressed ? Theme.pressedOnDarkStrong : "transparent")
                    Image {
                        id: icon
                        source: "image://quorin/art/" + button.modelData.icon
                        width: rail.landscape && !rail.compact ? 32 : (rail.compact ? 24 : 28); height: width
                        anchors.horizontalCenter: parent.horizontalCenter
                        y: rail.landscape && !rail.compact ? 10 : 6
                        asynchronous: true
                    }
                    Text {
                        anchors.top: icon.bottom
                        anchors.topMargin: rail.compact ? 2 : 4
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: button.modelData.title
                        color: Theme.textOnDark
                        font.family: rail.fontFamily
                        font.pixelSize: Theme.fontBody
                        font.bold: button.current
                    }
                    MouseArea {
                        id: area
                        anchors.fill: parent
                        onClicked: rail.rootController.switchView(button.modelData.tag)
                    }
                    // The count of the button's screen: shelf updates on the
                    // bookshelf (a tap on it opens the updated comics), downloads
                    // on the downloads button.
                    Rectangle {
                        id: badge
                        objectName: "badge" + button.modelData.tag
                        readonly property string count: button.modelData.tag === 105 && rail.rootController.bookshelfBadgeVisible
                                                        ? rail.rootController.bookshelfBadge
                                                        : (button.modelData.tag === 106 && rail.rootController.downloadBadgeVisible
                                                           ? rail.rootController.downloadBadge : "")
                        visible: count !== ""
                        height: Theme.badgeSize
                        width: Math.max(height, label.implicitWidth + 10)
                        radius: height / 2
                        x: parent.width - width + 2
                        y: 2
                        color: Theme.badgeBackground
                        border.color: Theme.badgeRing
                        border.width: 2
                        Text {
                            id: label
                            anchors.centerIn: parent
                            text: badge.count
                            color: Theme.badgeText
                            font.family: rail.fontFamily
                            font.pixelSize: Theme.fontCaption
                            font.bold: true
                        }
                        MouseArea {
                            anchors.fill: parent
                            anchors.margins: -6
                            enabled: button.modelData.tag === 105
                            onClicked: rail.rootController.gengXinView.openPanel()
                        }
                    }
                }
            }
        }
    }
}
