pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The tucao of one page over its image (the VORATucaoPlayback's rows). Put it
// in the page's image container, filling it: a tucao stored at (x, y, width,
// height) image pixels stands at that rectangle scaled to the container's
// current size, so it follows the fit, the zoom and the scroll of the image.
Item {
    id: root
    property VORATucaoPlayback playback
    property string fontFamily
    readonly property real fx: playback && playback.imageWidth > 0 ? width / playback.imageWidth : 0
    readonly property real fy: playback && playback.imageHeight > 0 ? height / playback.imageHeight : 0

    anchors.fill: parent

    Repeater {
        objectName: "tucaoRepeater"
        model: root.playback
        delegate: TucaoView {
            id: bubble
            required property int index
            required property var model
            objectName: "tucaoView"
            x: bubble.model.x * root.fx
            y: bubble.model.y * root.fy
            width: bubble.model.width * root.fx
            height: bubble.model.height * root.fy
            content: bubble.model.content
            isOwn: bubble.model.isOwn
            row: bubble.index
            playback: root.playback
            fontFamily: root.fontFamily
        }
    }
}
