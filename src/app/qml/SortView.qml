import QtQuick
import Quorin

// The category screen: a head with the three filter menus and the layout
// button, the open menu's buttons, and the comics as a grid of three or as a
// list, with pull-down reload and pull-up paging (or the wheel down to the
// list's end). Everything it shows comes from VORASortView. The grid holds
// three comics a row where a card keeps at least minCellWidth, fewer in a
// narrow window.
Rectangle {
    id: view
    property VORASortView sort
    property string fontFamily
    readonly property bool gridMode: sort ? sort.sortTableType === 0 : true
    readonly property int minCellWidth: 260
    readonly property int columns: gridMode ? Math.max(1, Math.min(3, Math.floor(grid.width / (minCellWidth + 12)))) : 1

    radius: 18
    color: "#FFFCF8"
    border.color: "#EADFD3"
    clip: true

    Rectangle {
        id: head
        objectName: "sortHead"
        width: parent.width
        height: 56
        radius: 18
        color: "#2E3047"
        Rectangle { width: parent.width; height: 18; anchors.bottom: parent.bottom; color: parent.color }

        Row {
            x: 22
            anchors.verticalCenter: parent.verticalCenter
            spacing: 14
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "分类"
                color: "white"
                font.family: view.fontFamily
                font.pixelSize: 20
                font.bold: true
            }
            Rectangle {
                objectName: "filterTitle"
                anchors.verticalCenter: parent.verticalCenter
                visible: view.sort && view.sort.filterTitle !== ""
                width: filterText.implicitWidth + 26
                height: 28
                radius: 14
                gradient: Gradient {
                    orientation: Gradient.Horizontal
                    GradientStop { position: 0; color: "#FF7043" }
                    GradientStop { position: 1; color: "#F06292" }
                }
                Text {
                    id: filterText
                    anchors.centerIn: parent
                    text: view.sort ? view.sort.filterTitle : ""
                    color: "white"
                    font.family: view.fontFamily
                    font.pixelSize: 14
                    font.bold: true
                }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: view.sort && view.sort.comicTotal > 0 ? "共 " + view.sort.comicTotal + " 部" : ""
                color: "#8E8AA8"
                font.family: view.fontFamily
                font.pixelSize: 13
            }
        }

        Row {
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
            Repeater {
                model: view.sort ? view.sort.menuButtons : []
                delegate: Rectangle {
                    objectName: "menu" + modelData.tag
                    readonly property bool open: view.sort && view.sort.openMenu === modelData.tag
                    width: 76; height: 34
                    radius: 17
                    color: open ? "#FF7043" : (menuArea.pressed ? "#4DFFFFFF" : "#3A3C58")
                    Text {
                        anchors.centerIn: parent
                        text: modelData.title + (parent.open ? " ▴" : " ▾")
                        color: "white"
                        font.family: view.fontFamily
                        font.pixelSize: 14
                    }
                    MouseArea {
                        id: menuArea
                        anchors.fill: parent
                        onClicked: view.sort.setPopbutton(modelData.tag)
                    }
                }
            }
            Rectangle {
                objectName: "layoutButton"
                width: 44; height: 34
                radius: 17
                color: layoutArea.pressed ? "#4DFFFFFF" : "#3A3C58"
                // Grid mode offers the list, list mode the grid.
                Grid {
                    anchors.centerIn: parent
                    visible: view.gridMode
                    columns: 1
                    spacing: 3
                    Repeater {
                        model: 3
                        Rectangle { width: 18; height: 3; radius: 1.5; color: "white" }
                    }
                }
                Grid {
                    anchors.centerIn: parent
                    visible: !view.gridMode
                    columns: 2
                    spacing: 3
                    Repeater {
                        model: 4
                        Rectangle { width: 7; height: 7; radius: 1.5; color: "white" }
                    }
                }
                MouseArea {
                    id: layoutArea
                    anchors.fill: parent
                    onClicked: view.sort.layoutBtn()
                }
            }
        }
    }

    GridView {
        id: grid
        objectName: "sortGrid"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        anchors.topMargin: 12
        clip: true
        model: view.sort ? view.sort.comics : null
        cellWidth: Math.floor(width / view.columns)
        cellHeight: view.sort ? view.sort.rowHeight : 205
        boundsBehavior: Flickable.DragOverBounds
        cacheBuffer: 600

        readonly property bool pulledDown: contentY < originY - 65
        readonly property real overshoot: contentY + height - (originY + contentHeight)
        readonly property bool pulledUp: count > 0 && overshoot > 65

        delegate: SortComicCell {
            width: grid.cellWidth - 12
            height: grid.cellHeight - 12
            gridMode: view.gridMode
            comicIndex: index
            comicName: model.comicName
            comicAuthor: model.comicAuthor
            comicCover: model.comicCover
            comicDescription: model.comicDescription
            clickTotal: model.comicClickTotal
            badge: model.badge
            lastUpdate: model.lastUpdate
            fontFamily: view.fontFamily
            onTapped: view.sort.executeDown(comicIndex)
        }

        // Under the last row: the pull-up prompt, or the end of the category
        // when a page brought nothing (in place of the prompt, so that it
        // covers no comic).
        footer: Item {
            objectName: "sortFooter"
            width: grid.width
            height: view.sort && view.sort.hasFooter ? 65 : 0
            visible: height > 0
            Text {
                objectName: "sortFooterText"
                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.width - 24)
                elide: Text.ElideRight
                text: !view.sort ? ""
                      : view.sort.textPanel !== "" ? view.sort.textPanel
                      : (view.sort.reloadingUp || view.sort.loadingPanel) ? "正在加载…"
                      : (grid.pulledUp ? "松开加载更多" : "上拉加载更多")
                color: "#9A8C80"
                font.family: view.fontFamily
                font.pixelSize: 15
            }
        }

        onDragEnded: {
            if (!view.sort)
                return
            if (pulledDown)
                view.sort.refreshTriggered(contentY - originY)
            else if (pulledUp)
                view.sort.refreshTriggered(overshoot)
        }
        // The wheel (or a flick) that brings the footer into view asks for the
        // next page as a pull-up past it does.
        onAtYEndChanged: {
            if (atYEnd && !dragging && count > 0 && contentHeight > height && view.sort && view.sort.hasFooter)
                view.sort.refreshTriggered(overshoot > 0 ? overshoot : 1)
        }

        Item {
            objectName: "sortRefreshHeader"
            parent: grid
            width: grid.width
            height: 65
            y: -grid.contentY + grid.originY - 65
            visible: grid.contentY < grid.originY || (view.sort && view.sort.reloading)
            Text {
                anchors.centerIn: parent
                text: view.sort && view.sort.reloading ? "正在刷新…" : (grid.pulledDown ? "松开即可刷新" : "下拉可以刷新")
                color: "#9A8C80"
                font.family: view.fontFamily
                font.pixelSize: 15
            }
        }
    }

    // While a menu is open, a click beside it only closes it.
    MouseArea {
        objectName: "menuShade"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: menu.visible
        onClicked: view.sort.closemenuView()
    }

    // The open menu's filter buttons, dropped under the head.
    Rectangle {
        id: menu
        objectName: "filterMenu"
        readonly property var buttons: !view.sort ? []
                                       : view.sort.openMenu === 116 ? view.sort.themeButtons
                                       : view.sort.openMenu === 117 ? view.sort.serialButtons
                                       : view.sort.openMenu === 115 ? view.sort.sortButtons : []
        visible: buttons.length > 0
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        height: visible ? flow.height + 36 : 0
        color: "white"
        Rectangle { anchors.top: parent.bottom; width: parent.width; height: 10
            gradient: Gradient {
                GradientStop { position: 0; color: "#262E3047" }
                GradientStop { position: 1; color: "#002E3047" }
            }
        }
        Flow {
            id: flow
            x: 22; y: 18
            width: parent.width - 44
            spacing: 12
            Repeater {
                model: menu.buttons
                delegate: Rectangle {
                    objectName: "filter" + modelData.tag
                    readonly property bool current: view.sort && view.sort.btnInt === modelData.tag
                    width: Math.max(88, label.implicitWidth + 32)
                    height: 40
                    radius: 20
                    color: current ? "#FF7043" : (filterArea.pressed ? "#FFE3D6" : "white")
                    border.color: current ? "#FF7043" : "#EADFD3"
                    Text {
                        id: label
                        anchors.centerIn: parent
                        text: modelData.title
                        color: parent.current ? "white" : "#2E3047"
                        font.family: view.fontFamily
                        font.pixelSize: 16
                    }
                    MouseArea {
                        id: filterArea
                        anchors.fill: parent
                        onClicked: view.sort.switchFilter(modelData.tag)
                    }
                }
            }
        }
    }

    // Text-only panel: the end of a category that has no comic at all (with
    // comics, the footer says it).
    Rectangle {
        objectName: "sortTextPanel"
        visible: view.sort && view.sort.textPanel !== "" && !view.sort.hasFooter
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 40
        width: Math.min(parent.width - 60, panelText.implicitWidth + 48)
        height: 48
        radius: 24
        color: "#E62E3047"
        Text {
            id: panelText
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 48)
            elide: Text.ElideRight
            text: view.sort ? view.sort.textPanel : ""
            color: "white"
            font.family: view.fontFamily
            font.pixelSize: 15
        }
    }

    NoNetworkPanel {
        objectName: "sortNoNetwork8888"
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        panel: view.sort ? view.sort.noNetworkView : null
        fontFamily: view.fontFamily
    }
}
