pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The horizontal strip of pages (VORAComicViewManager). Only the page views
// the manager keeps (the current page and two on each side) have delegates;
// each stands at x = page × strip width. A release snaps to one page; pulling
// the first or last page further than a twelfth of the width asks for the
// chapter before or after.
Flickable {
    id: strip
    property VORAComicViewManager manager
    property string fontFamily
    property Component pageOverlay
    // The page the strip rests on zoomed in: its own pan wins over the strip.
    readonly property VORAPictureImageView currentPage: manager && manager.pageCount > 0 ? manager.pageViewAt(manager.pageIndex) : null
    readonly property bool currentZoomed: currentPage !== null && currentPage.scrollView.zoomScale > 1.001

    contentWidth: manager ? Math.max(manager.stripContentWidth, width) : width
    contentHeight: height
    flickableDirection: Flickable.HorizontalFlick
    boundsBehavior: Flickable.DragOverBounds
    pixelAligned: true
    clip: true
    interactive: !currentZoomed

    // A release snaps to one page: the Flickable's own flick (it comes right
    // after the release, with the velocity of the finger's last moves) is
    // taken for its velocity and cancelled.
    property real releaseVelocity: 0
    property bool releasing: false
    onDraggingChanged: {
        if (dragging) {
            snap.stop();
            releasing = false;
            return;
        }
        releaseVelocity = 0;
        releasing = true;
        // Qt 6.4's type information lists callLater as a property, not a method.
        Qt.callLater(finishRelease); // qmllint disable type
    }
    onFlickStarted: {
        if (!releasing)
            return;
        releaseVelocity = horizontalVelocity;
        cancelFlick();
    }
    function finishRelease() {
        if (!releasing || !manager)
            return;
        releasing = false;
        // The overscroll rule first; a chapter asked for leaves the strip on its page.
        const otherChapter = manager.scrollViewWillBeginDecelerating(contentX);
        snapTo(otherChapter ? manager.pageIndex : manager.pageForRelease(contentX, releaseVelocity));
    }

    // The manager's width is the page pitch (the strip follows it).
    readonly property real pitch: manager && manager.viewWidth > 0 ? manager.viewWidth : width
    onPitchChanged: if (manager && !dragging) { snap.stop(); contentX = manager.pageIndex * pitch; }

    function snapTo(page) {
        snap.stop();
        snap.to = page * pitch;
        if (Math.abs(contentX - snap.to) < 0.5) {
            contentX = snap.to;
            if (manager)
                manager.scrollViewDidEndDecelerating(contentX);
            return;
        }
        snap.start();
    }

    NumberAnimation {
        id: snap
        target: strip
        property: "contentX"
        duration: 220
        easing.type: Easing.OutCubic
        onFinished: if (strip.manager) strip.manager.scrollViewDidEndDecelerating(strip.contentX)
    }

    Connections {
        target: strip.manager
        function onScrollToPageRequested(index, animated) {
            if (strip.dragging)
                return;
            const x = index * strip.pitch;
            if (animated) {
                if (Math.abs(strip.contentX - x) > 0.5 || snap.running)
                    strip.snapTo(index);
            } else {
                snap.stop();
                strip.contentX = x;
            }
        }
        function onPagesChanged() {
            snap.stop();
            strip.contentX = strip.manager.pageIndex * strip.pitch;
        }
    }

    Repeater {
        model: strip.manager ? strip.manager.pageViews : null
        delegate: ReaderPageView {
            id: pageItem
            required property VORAPictureImageView pageView
            required property int pageIndex
            objectName: "readerPage" + pageItem.pageIndex
            page: pageItem.pageView
            manager: strip.manager
            fontFamily: strip.fontFamily
            overlay: strip.pageOverlay
        }
    }
}
