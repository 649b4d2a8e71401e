pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// One page of the strip (VORAPictureImageView): the page image in its zooming
// view, the loading placeholder, the image's fade. Every rule (fit, zoom
// limits, taps) is C++; this file draws the state and hands the gestures over.
//
// imageContainer is the item that zooms and scrolls with the image: it is the
// image's size at zoom 1 and scaled by the zoom, so children placed in
// displayed-image coordinates (e.g. the tucao overlay, given as `overlay` and
// loaded with `pageView` and `container` in its context) follow it. The
// page's tucao overlay lives there.
Item {
    id: root
    property VORAPictureImageView page
    property VORAComicViewManager manager
    property string fontFamily
    property Component overlay
    readonly property VORAPictureScrollView sv: page ? page.scrollView : null
    readonly property bool shown: page !== null && page.state === 1
    property alias imageContainer: container
    property alias flickable: flick

    x: page ? page.x : 0
    width: page ? page.width : 0
    height: page ? page.height : 0

    Flickable {
        id: flick
        objectName: "readerPageFlick"
        anchors.fill: parent
        clip: true
        contentWidth: root.sv ? Math.max(root.sv.contentWidth, width) : width
        contentHeight: root.sv ? Math.max(root.sv.contentHeight, height) : height
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.AutoFlickIfNeeded
        interactive: root.sv !== null && (root.sv.contentWidth > width + 0.5 || root.sv.contentHeight > height + 0.5)
        pixelAligned: true

        onContentXChanged: if (root.sv) root.sv.setContentOffset(contentX, contentY)
        onContentYChanged: if (root.sv) root.sv.setContentOffset(contentX, contentY)
        onDraggingChanged: if (dragging && root.sv) root.sv.stopAnimation()

        Item {
            id: container
            objectName: "readerImageContainer"
            x: root.sv ? root.sv.containerX : 0
            y: root.sv ? root.sv.containerY : 0
            width: root.sv ? root.sv.imageWidth : 0
            height: root.sv ? root.sv.imageHeight : 0
            scale: root.sv ? root.sv.zoomScale : 1
            transformOrigin: Item.TopLeft
            opacity: root.shown ? 1 : 0
            Behavior on opacity { NumberAnimation { duration: 180; easing.type: Easing.OutQuad } }

            // Tiles of at most 4096 px, top to bottom; each overlaps the next by
            // a point so no seam shows between them.
            Repeater {
                id: tileRepeater
                model: root.page ? root.page.tiles : []
                delegate: Image {
                    id: tile
                    required property int index
                    required property var modelData
                    objectName: "readerPageTile"
                    y: tile.modelData.top * container.height
                    width: container.width
                    height: tile.modelData.span * container.height + (tile.index < tileRepeater.count - 1 ? 1 : 0)
                    source: tile.modelData.source
                    asynchronous: false // decoded already: no frame without the page
                    cache: false
                    smooth: true
                    fillMode: Image.Stretch
                }
            }

            // The page's tucao (its VORATucaoPlayback's rows: only those on
            // screen have delegates), scaled with the image.
            TucaoOverlay {
                objectName: "readerTucaoOverlay"
                playback: root.page ? root.page.tucaoPlayback : null
                fontFamily: root.fontFamily
                visible: root.shown
            }

            Loader {
                anchors.fill: parent
                active: root.overlay !== null && root.page !== null
                sourceComponent: root.overlay
                property VORAPictureImageView pageView: root.page
                property Item container: container
            }
        }

        TapHandler {
            objectName: "readerPageTap"
            gesturePolicy: TapHandler.DragThreshold
            onTapped: (eventPoint, button) => {
                if (!root.page || !root.manager)
                    return;
                const vx = eventPoint.position.x - flick.contentX;
                const vy = eventPoint.position.y - flick.contentY;
                if (tapCount === 1)
                    root.manager.singleTap(root.page.pageIndex, vx, vy);
                else if (tapCount === 2)
                    root.manager.doubleTap(root.page.pageIndex, vx, vy);
            }
        }
    }

    Connections {
        target: root.sv
        function onContentOffsetChanged() {
            if (Math.abs(flick.contentX - root.sv.contentX) > 0.01)
                flick.contentX = root.sv.contentX;
            if (Math.abs(flick.contentY - root.sv.contentY) > 0.01)
                flick.contentY = root.sv.contentY;
        }
    }

    PinchHandler {
        id: pinch
        target: null
        property real baseScale: 1
        onActiveChanged: {
            if (!root.sv)
                return;
            if (active)
                baseScale = root.sv.zoomScale;
            else
                root.sv.endZoomGesture();
        }
        onActiveScaleChanged: {
            if (active && root.sv)
                root.sv.zoomAround(baseScale * activeScale, centroid.position.x, centroid.position.y);
        }
    }

    // Loading placeholder, and a quiet mark for a page that did not load
    // while it was not the current one.
    Column {
        objectName: "readerPagePlaceholder"
        anchors.centerIn: parent
        spacing: 14
        visible: root.page !== null && root.page.state !== 1
        Rectangle {
            id: loadingRing
            anchors.horizontalCenter: parent.horizontalCenter
            width: 54; height: 54; radius: 27
            color: "transparent"
            border.color: Theme.pressedOnDarkStrong
            border.width: 3
            visible: root.page !== null && root.page.state === 0
            Rectangle {
                width: 12; height: 12; radius: 6
                color: Theme.accent
                x: parent.width / 2 - 6; y: -4
            }
            RotationAnimator on rotation {
                from: 0; to: 360; duration: 900
                loops: Animation.Infinite
                // Only while the ring shows: a running animator keeps the window drawing.
                running: loadingRing.visible
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.page ? (root.page.state === 2 ? "第" + (root.page.pageIndex + 1) + "页加载失败" : root.page.placeholderText) : ""
            color: Theme.readerBarTextMuted
            font.family: root.fontFamily
            font.pixelSize: Theme.fontHeading
        }
    }
}
