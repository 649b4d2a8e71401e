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
            objectName: "tucaoView"
            x: model.x * root.fx
            y: model.y * root.fy
            width: model.width * root.fx
            height: model.height * root.fy
            content: model.content
            isOwn: model.isOwn
            row: index
            playback: root.playback
            fontFamily: root.fontFamily
        }
    }
}
