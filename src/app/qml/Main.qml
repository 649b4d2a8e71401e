import QtQuick
import QtQuick.Window

Window {
    id: window
    width: initialWidth
    height: initialHeight
    visible: true
    title: "Quorin Reader"
    color: "#FFF3E6"

    readonly property bool landscape: rootController.landscape
    readonly property string fontFamily: "Noto Sans CJK SC"
    readonly property QtObject reader: rootController.readHomePageViewController
    // The reader covers the shell: what lies under it is not drawn.
    readonly property bool readerShown: reader !== null && reader.active

    onWidthChanged: rootController.setWindowSize(width, height)
    onHeightChanged: rootController.setWindowSize(width, height)
    Component.onCompleted: rootController.setWindowSize(width, height)

    Image {
        objectName: "background"
        anchors.fill: parent
        visible: !window.readerShown
        source: "image://quorin/art/" + rootController.backgroundName
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
    }

    NavigationRail {
        id: rail
        objectName: "navigationRail"
        visible: !window.readerShown
        landscape: window.landscape
        fontFamily: window.fontFamily
        x: 0
        y: window.landscape ? 0 : window.height - height
        width: window.landscape ? 96 : window.width
        height: window.landscape ? window.height : 76
    }

    Item {
        id: content
        objectName: "content"
        x: window.landscape ? rail.width + 14 : 14
        y: 14
        width: window.width - x - 14
        height: (window.landscape ? window.height : rail.y) - 28
        visible: !window.readerShown

        FeedView {
            objectName: "feedView"
            anchors.fill: parent
            feed: rootController.recommentView
            fontFamily: window.fontFamily
            visible: rootController.currentTag === 100 && feed !== null
        }

        SortView {
            objectName: "sortView"
            anchors.fill: parent
            sort: rootController.sortView
            fontFamily: window.fontFamily
            visible: rootController.currentTag >= 101 && rootController.currentTag <= 104 && sort !== null
        }

        SearchView {
            objectName: "searchView"
            anchors.fill: parent
            search: rootController.searchView
            fontFamily: window.fontFamily
            visible: rootController.currentTag === 107 && search !== null
        }
    }

    ComicHomePageView {
        objectName: "comicDetail300000"
        anchors.fill: content
        home: rootController.comicHomePageView
        detail: rootController.comicDetail
        fontFamily: window.fontFamily
        visible: detail.tag === 300000 && !window.readerShown
    }

    Rectangle {
        id: dimming
        objectName: "dimming777777"
        anchors.fill: parent
        color: "black"
        opacity: rootController.dimmingAlpha
        visible: opacity > 0
        Behavior on opacity { NumberAnimation { duration: 500 } }
        MouseArea {
            anchors.fill: parent
            onClicked: rootController.closeSettingView()
        }
    }

    SettingsPanel {
        objectName: "settingsPanel"
        settings: rootController.settingView
        fontFamily: window.fontFamily
        width: Math.min(440, window.width - 40)
        height: window.height
        x: rootController.settingsOpen ? window.width - width : window.width
        visible: settings !== null && x < window.width
        Behavior on x { NumberAnimation { duration: 300; easing.type: Easing.OutCubic } }
    }

    WelcomeView {
        objectName: "welcomeView"
        anchors.fill: parent
        welcome: rootController.welcomeView
        visible: welcome !== null
    }

    // The reader takes the whole window; its read mode shapes the reading
    // surface inside it and never resizes the window.
    ReaderView {
        objectName: "readerView"
        anchors.fill: parent
        reader: window.reader
        fontFamily: window.fontFamily
        visible: window.readerShown
        onVisibleChanged: if (visible) forceActiveFocus()
    }

    OverlayLayer {
        objectName: "overlayLayer"
        anchors.fill: parent
        overlay: overlayLayer
        fontFamily: window.fontFamily
    }
}
