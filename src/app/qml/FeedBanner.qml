pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The banner: one page per slide, five pages at least (the timer cycles over
// five whatever the slide count), moved by the feed's timeCount. Its height
// follows its width at the slides' aspect, so a picture is never cropped.
Rectangle {
    id: banner
    property VORARecommentView feed
    property string fontFamily
    readonly property int pageCount: Math.max(5, feed ? feed.slides.length : 0)
    // The site's slide pictures are 1024 × 400.
    readonly property real aspect: 1024 / 400

    implicitHeight: Math.round(width / aspect)

    radius: 14
    color: Theme.bannerPlaceholder
    clip: true

    Flickable {
        id: strip
        objectName: "bannerStrip"
        anchors.fill: parent
        contentWidth: banner.width * banner.pageCount
        contentHeight: height
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        onMovementStarted: if (banner.feed) banner.feed.slideTouchBegan()
        onMovementEnded: {
            if (!banner.feed)
                return
            // Settle on a whole page, then let the timer run again.
            var page = Math.round(contentX / banner.width)
            contentX = page * banner.width
            banner.feed.scrollViewDidScroll(contentX, banner.width)
            banner.feed.slideTouchEnded()
        }

        Behavior on contentX {
            enabled: !strip.moving
            NumberAnimation { duration: 450; easing.type: Easing.InOutQuad }
        }

        Row {
            Repeater {
                model: banner.pageCount
                delegate: Item {
                    id: slideItem
                    required property int index
                    readonly property var slide: banner.feed && index < banner.feed.slides.length
                                                 ? banner.feed.slides[index] : null
                    width: banner.width
                    height: banner.height
                    Image {
                        anchors.fill: parent
                        source: "image://quorin/art/pagelistdefaultcover"
                        fillMode: Image.PreserveAspectCrop
                        visible: picture.status !== Image.Ready
                        asynchronous: true
                    }
                    Image {
                        id: picture
                        anchors.fill: parent
                        fillMode: Image.PreserveAspectFit
                        asynchronous: true
                        source: slideItem.slide && slideItem.slide.comicCover !== ""
                                ? "image://quorin/net/" + encodeURIComponent(slideItem.slide.comicCover) : ""
                    }
                    // A tap opens the slide shown (its comic or its link); a
                    // swipe is the strip's.
                    MouseArea {
                        objectName: "slide" + slideItem.index
                        anchors.fill: parent
                        onClicked: if (banner.feed) banner.feed.handleTapGesture()
                    }
                }
            }
        }
    }

    Connections {
        target: banner.feed
        function onTimeCountChanged() {
            if (!strip.moving)
                strip.contentX = banner.width * banner.feed.timeCount
        }
    }

    Row {
        objectName: "pageControl"
        anchors.right: parent.right
        anchors.rightMargin: 18
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        spacing: Theme.spacingSmall
        Repeater {
            model: banner.pageCount
            delegate: Rectangle {
                id: dot
                required property int index
                width: banner.feed && banner.feed.timeCount === index ? 22 : 8
                height: 8
                radius: 4
                color: banner.feed && banner.feed.timeCount === dot.index ? Theme.accent : Theme.pageDotInactive
                Behavior on width { NumberAnimation { duration: 200 } }
            }
        }
    }
}
