import QtQuick
import QtQuick.Window
import Quorin

Window {
    id: window
    visible: true
    title: "Quorin Reader"
    color: Theme.windowBackground

    // Set by the app delegate as it loads the window (with its first size).
    required property VORARootViewController rootController
    required property VORAOverlayLayer overlayLayer

    readonly property bool landscape: rootController.landscape
    readonly property string fontFamily: Theme.fontFamily
    readonly property VORAReadHomePageViewController reader: rootController.readHomePageViewController
    // The reader covers the shell: what lies under it is not drawn.
    readonly property bool readerShown: reader !== null && reader.active
    // The wallet's screens open over the shell and over the reader.
    readonly property bool walletShown: rootController.payOpen || rootController.walletHistoryOpen

    // The first size may come before the root controller as the window is made.
    onWidthChanged: if (rootController) rootController.setWindowSize(width, height)
    onHeightChanged: if (rootController) rootController.setWindowSize(width, height)
    Component.onCompleted: rootController.setWindowSize(width, height)

    // The root controller decides the background picture (the saved one, else
    // "one"); the Theme is what every screen draws it from.
    Binding {
        target: Theme
        property: "backgroundName"
        value: window.rootController.backgroundName
    }

    Image {
        objectName: "background"
        anchors.fill: parent
        visible: !window.readerShown
        source: "image://quorin/art/" + Theme.backgroundName
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
    }

    NavigationRail {
        id: rail
        rootController: window.rootController
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
            feed: window.rootController.recommentView
            fontFamily: window.fontFamily
            visible: window.rootController.currentTag === 100 && feed !== null
        }

        SortView {
            objectName: "sortView"
            anchors.fill: parent
            sort: window.rootController.sortView
            fontFamily: window.fontFamily
            visible: window.rootController.currentTag >= 101 && window.rootController.currentTag <= 104 && sort !== null
        }

        BookshelfScreen {
            objectName: "bookshelfScreen"
            anchors.fill: parent
            shelf: window.rootController.bookshelfView
            bookMarkView: window.rootController.bookMarkView
            recendReadView: window.rootController.recendReadView
            fontFamily: window.fontFamily
            visible: window.rootController.currentTag === 105 && shelf !== null
        }

        SearchView {
            objectName: "searchView"
            anchors.fill: parent
            search: window.rootController.searchView
            fontFamily: window.fontFamily
            visible: window.rootController.currentTag === 107 && search !== null
        }
    }

    ComicHomePageView {
        objectName: "comicDetail300000"
        anchors.fill: content
        home: window.rootController.comicHomePageView
        rootController: window.rootController
        detail: window.rootController.comicDetail
        fontFamily: window.fontFamily
        visible: detail.tag === 300000 && !window.readerShown
    }

    GengXinPanel {
        objectName: "gengXinView"
        anchors.fill: parent
        gengXin: window.rootController.gengXinView
        fontFamily: window.fontFamily
        visible: !window.readerShown
    }

    Rectangle {
        id: dimming
        objectName: "dimming777777"
        anchors.fill: parent
        color: Theme.shade
        opacity: window.rootController.dimmingAlpha
        visible: opacity > 0
        // Over the reader too while a wallet screen or the user panel is open.
        z: window.walletShown || window.rootController.userViewOpen ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: 500 } }
        MouseArea {
            anchors.fill: parent
            onClicked: window.rootController.dimmingTapped()
        }
    }

    SettingsPanel {
        objectName: "settingsPanel"
        settings: window.rootController.settingView
        rootController: window.rootController
        fontFamily: window.fontFamily
        width: Math.min(440, window.width - 40)
        height: window.height
        x: window.rootController.settingsOpen ? window.width - width : window.width
        visible: settings !== null && x < window.width
        Behavior on x { NumberAnimation { duration: 300; easing.type: Easing.OutCubic } }
    }

    WelcomeView {
        objectName: "welcomeView"
        anchors.fill: parent
        welcome: window.rootController.welcomeView
        visible: welcome !== null
    }

    // The reader takes the whole window; its read mode shapes the reading
    // surface inside it and never resizes the window.
    ReaderView {
        id: readerView
        objectName: "readerView"
        anchors.fill: parent
        reader: window.reader
        fontFamily: window.fontFamily
        visible: window.readerShown
        onVisibleChanged: if (visible) forceActiveFocus()
    }

    // The user panel opens over the shell and over the reader (which takes
    // the keys back when it closes). The wallet's screens it opens lie over
    // it; signed out, it lies over the payment screen that asked to sign in.
    UserPanel {
        objectName: "userPanel"
        z: window.walletShown && !signedIn ? 1.5 : 1
        user: window.rootController.userView
        rootController: window.rootController
        fontFamily: window.fontFamily
        width: Math.min(460, window.width - 40)
        height: window.height
        x: window.rootController.userViewOpen ? window.width - width : window.width
        visible: user !== null && (window.rootController.userViewOpen || x < window.width)
        Behavior on x { NumberAnimation { duration: 300; easing.type: Easing.OutCubic } }
        onVisibleChanged: if (!visible && window.readerShown) readerView.forceActiveFocus()
    }

    PayView {
        objectName: "payView"
        anchors.fill: parent
        z: 1
        pay: window.rootController.payView
        rootController: window.rootController
        fontFamily: window.fontFamily
        visible: window.rootController.payOpen && pay !== null
    }

    WalletHistoryView {
        objectName: "walletHistoryView"
        anchors.fill: parent
        z: 1
        history: window.rootController.walletHistory
        rootController: window.rootController
        fontFamily: window.fontFamily
        visible: window.rootController.walletHistoryOpen && history !== null
    }

    OverlayLayer {
        z: 2
        objectName: "overlayLayer"
        anchors.fill: parent
        overlay: window.overlayLayer
        fontFamily: window.fontFamily
    }
}
