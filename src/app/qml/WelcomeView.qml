pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The welcome pages of the first launch (tag 4733801). Besides a swipe, the
// wheel and the arrow keys turn the pages; Return on the last one closes them.
Rectangle {
    id: root
    property WelcomeViewController welcome

    color: Theme.barBackground
    MouseArea { anchors.fill: parent }

    onVisibleChanged: if (visible) forceActiveFocus()
    Component.onCompleted: if (visible) forceActiveFocus()
    Keys.onRightPressed: pages.incrementCurrentIndex()
    Keys.onDownPressed: pages.incrementCurrentIndex()
    Keys.onLeftPressed: pages.decrementCurrentIndex()
    Keys.onUpPressed: pages.decrementCurrentIndex()
    Keys.onReturnPressed: if (pages.currentIndex === pages.count - 1) root.welcome.deleteWelcomeView()

    ListView {
        id: pages
        objectName: "welcomePages"
        anchors.fill: parent
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        boundsBehavior: Flickable.StopAtBounds
        model: root.welcome ? root.welcome.pages : []
        delegate: Item {
            id: page
            required property int index
            required property string modelData
            objectName: "welcomePage" + (316319 + index)
            width: pages.width
            height: pages.height
            // The whole picture (its last page's button included) in any
            // window, over the same picture cropped to fill the margins.
            Image {
                anchors.fill: parent
                source: "image://quorin/art/" + page.modelData
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                opacity: 0.5
            }
            Image {
                objectName: "welcomePicture"
                anchors.fill: parent
                source: "image://quorin/art/" + page.modelData
                fillMode: Image.PreserveAspectFit
                asynchronous: true
            }
            MouseArea {
                // The last page is a button that closes the welcome view.
                enabled: page.index === 4
                anchors.fill: parent
                onClicked: root.welcome.deleteWelcomeView()
            }
        }
    }

    MouseArea {
        objectName: "welcomeWheel"
        anchors.fill: parent
        acceptedButtons: Qt.NoButton // clicks go to the pages
        onWheel: (wheel) => {
            if (wheel.angleDelta.y < 0 || wheel.angleDelta.x < 0)
                pages.incrementCurrentIndex()
            else if (wheel.angleDelta.y > 0 || wheel.angleDelta.x > 0)
                pages.decrementCurrentIndex()
        }
    }
}
