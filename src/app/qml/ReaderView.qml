pragma ComponentBehavior: Bound
import QtQuick
import Quorin
import QtQuick.Window

// The reader screen (VORAReadHomePageViewController), full window over the
// shell: the page strip on black inside the reading surface (the read mode's
// shape laid out in the window the user chose), the brightness layer over the
// pages, the loading and failure indicators, the menu bars with the tucao
// menu across the window, and the tucao input view and editing layer over the
// surface. Arrow keys and page keys turn pages; Escape goes back.
// A panel exists only while its object lives: a Repeater of one or none makes
// it (Qt 6.4 does not let a Loader create a component of a bound file).
Rectangle {
    id: root
    property VORAReadHomePageViewController reader
    property string fontFamily
    // Laid over each page in displayed-image coordinates (the tucao overlay).
    property Component pageOverlay
    readonly property VORAComicViewManager manager: reader ? reader.comicViewManager : null
    readonly property rect surface: manager ? manager.surfaceRect : Qt.rect(0, 0, width, height)

    color: Theme.readerBackground
    focus: visible

    onWidthChanged: if (manager) manager.setWindowSize(width, height)
    onHeightChanged: if (manager) manager.setWindowSize(width, height)
    onManagerChanged: {
        if (!manager)
            return;
        manager.devicePixelRatio = Screen.devicePixelRatio > 0 ? Screen.devicePixelRatio : 1;
        manager.setWindowSize(width, height);
    }

    Keys.onLeftPressed: if (manager) manager.turnPage(-1)
    Keys.onRightPressed: if (manager) manager.turnPage(1)
    Keys.onUpPressed: if (manager) manager.turnPage(-1)
    Keys.onDownPressed: if (manager) manager.turnPage(1)
    Keys.onEscapePressed: if (reader) reader.backPreviousPage()
    Keys.onPressed: (event) => {
        if (!manager)
            return;
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space) {
            manager.turnPage(1);
            event.accepted = true;
        } else if (event.key === Qt.Key_PageUp) {
            manager.turnPage(-1);
            event.accepted = true;
        }
    }

    // Nothing under the reader takes a touch; a click beside the reading
    // surface shows or hides the bars.
    MouseArea {
        objectName: "readerBeside"
        anchors.fill: parent
        onClicked: if (root.reader) root.reader.toggleMenu()
    }

    // The reading surface.
    Item {
        objectName: "readerSurface"
        x: root.surface.x
        y: root.surface.y
        width: root.surface.width
        height: root.surface.height

        ReaderPageStrip {
            id: strip
            objectName: "readerStrip"
            anchors.fill: parent
            manager: root.manager
            fontFamily: root.fontFamily
            pageOverlay: root.pageOverlay
        }

        ReaderLoadingFailView {
            objectName: "readerLoadingFail101002"
            anchors.centerIn: parent
            manager: root.manager
            fontFamily: root.fontFamily
            visible: root.manager !== null && root.manager.loadingFailVisible
        }
    }

    // Brightness: a black layer over the pages.
    Rectangle {
        objectName: "readerLuminanceLayer"
        anchors.fill: parent
        color: Theme.shade
        opacity: root.reader ? root.reader.luminanceValue : 0
        visible: opacity > 0
    }

    // A chapter being opened.
    Rectangle {
        objectName: "readerLoading"
        anchors.centerIn: parent
        visible: root.reader !== null && root.reader.loading
        width: 180; height: 120; radius: Theme.radiusButton
        color: Theme.noticeBackground
        Item {
            id: loadingSpinner
            anchors.horizontalCenter: parent.horizontalCenter
            y: 18
            width: 44; height: 44
            Repeater {
                model: 8
                delegate: Rectangle {
                    id: dot
                    required property int index
                    x: 22 + 15 * Math.cos(dot.index * Math.PI / 4) - 4
                    y: 22 + 15 * Math.sin(dot.index * Math.PI / 4) - 4
                    width: 8; height: 8; radius: 4
                    color: Theme.iconOnDark
                    opacity: 0.25 + dot.index / 10
                }
            }
            RotationAnimator on rotation { from: 0; to: 360; duration: 1000; loops: Animation.Infinite; running: loadingSpinner.visible }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 80
            text: "正在加载…"
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontMedium
        }
    }

    // The brightness panel under the top bar, by its entry. It lies beneath
    // the bars: a click on another entry reaches that entry (which closes the
    // panel); a click on the page only closes the panel.
    Repeater {
        model: root.reader !== null && root.reader.luminancePanel !== null ? 1 : 0
        delegate: ReaderLuminancePanel {
            objectName: "readerLuminancePanel"
            anchors.fill: parent
            manager: root.reader.luminancePanel
            fontFamily: root.fontFamily
            panelX: Math.max(12, width - panelWidth - 12)
            panelY: menuBars.barHeight + 12
        }
    }

    ReaderMenuBars {
        id: menuBars
        objectName: "readerMenuBars"
        anchors.fill: parent
        reader: root.reader
        fontFamily: root.fontFamily
    }

    // The tucao menu bar, over the bottom bar while the bars are shown.
    TucaoMenuBar {
        id: tucaoBar
        objectName: "readerTucaoMenuBar"
        readonly property bool shown: root.manager !== null && !root.manager.tucaoMenuHidden
        // Slides in and out with `shown`; a resize puts it in place at once.
        property real reveal: shown ? 1 : 0
        Behavior on reveal { NumberAnimation { duration: 200; easing.type: Easing.OutCubic } }
        width: parent.width
        menu: root.manager ? root.manager.tucaoMenuView : null
        fontFamily: root.fontFamily
        y: parent.height - 70 - height + (70 + height + 4) * (1 - reveal)
        visible: reveal > 0
    }

    // Over the surface, in its points: writing a tucao (the text, then the tap
    // that places it) and the editing act on the current page, while it lives.
    Item {
        x: root.surface.x
        y: root.surface.y
        width: root.surface.width
        height: root.surface.height

        TucaoInputView {
            objectName: "readerTucaoInput"
            input: root.reader ? root.reader.tucaoInputView : null
            fontFamily: root.fontFamily
        }

        Repeater {
            model: root.reader !== null && root.reader.tucaoEditManager !== null ? 1 : 0
            delegate: TucaoEditMenu {
                objectName: "readerTucaoEdit"
                edit: root.reader.tucaoEditManager
                fontFamily: root.fontFamily
            }
        }
    }

    // The panels of the menu entries, while their objects live.
    Repeater {
        model: root.reader !== null && root.reader.chapterPanel !== null ? 1 : 0
        delegate: ReaderChapterPanel {
            objectName: "readerChapterPanel"
            anchors.fill: parent
            manager: root.reader.chapterPanel
            fontFamily: root.fontFamily
        }
    }
    Repeater {
        model: root.reader !== null && root.reader.bookmarkPanel !== null ? 1 : 0
        delegate: ReaderBookmarkPanel {
            objectName: "readerBookmarkPanel"
            anchors.fill: parent
            manager: root.reader.bookmarkPanel
            fontFamily: root.fontFamily
        }
    }
    Repeater {
        model: root.reader !== null && root.reader.helpShown ? 1 : 0
        delegate: ReaderHelpView {
            objectName: "readerHelpView"
            anchors.fill: parent
            controller: root.reader
            area: root.surface
            fontFamily: root.fontFamily
            onDismissed: root.reader.hideHelpView()
        }
    }
}
