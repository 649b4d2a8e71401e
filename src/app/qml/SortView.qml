pragma ComponentBehavior: Bound
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

    radius: Theme.radiusPanel
    color: Theme.surface
    border.color: Theme.surfaceBorder
    clip: true

    Rectangle {
        id: head
        objectName: "sortHead"
        width: parent.width
        height: 56
        radius: Theme.radiusPanel
        color: Theme.barBackground
        Rectangle { width: parent.width; height: 18; anchors.bottom: parent.bottom; color: parent.color }

        Row {
            x: 22
            anchors.verticalCenter: parent.verticalCenter
            spacing: 14
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "分类"
                color: Theme.textOnDark
                font.family: view.fontFamily
                font.pixelSize: Theme.fontHeadline
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
                    GradientStop { position: 0; color: Theme.accent }
                    GradientStop { position: 1; color: Theme.accentGradientEnd }
                }
                Text {
                    id: filterText
                    anchors.centerIn: parent
                    text: view.sort ? view.sort.filterTitle : ""
                    color: Theme.textOnDark
                    font.family: view.fontFamily
                    font.pixelSize: Theme.fontBody
                    font.bold: true
                }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: view.sort && view.sort.comicTotal > 0 ? "共 " + view.sort.comicTotal + " 部" : ""
                color: Theme.textOnDarkMuted
                font.family: view.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }

        Row {
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall
            Repeater {
                model: view.sort ? view.sort.menuButtons : []
                delegate: Rectangle {
                    id: menuButton
                    required property sortButton modelData
                    objectName: "menu" + modelData.tag
                    readonly property bool open: view.sort && view.sort.openMenu === menuButton.modelData.tag
                    width: 76; height: 34
                    radius: 17
                    color: menuButton.open ? Theme.accent : (menuArea.pressed ? Theme.pressedOnDark : Theme.barButton)
                    Text {
                        anchors.centerIn: parent
                        text: menuButton.modelData.title + (menuButton.open ? " ▴" : " ▾")
                        color: Theme.textOnDark
                        font.family: view.fontFamily
                        font.pixelSize: Theme.fontBody
                    }
                    MouseArea {
                        id: menuArea
                        anchors.fill: parent
                        onClicked: view.sort.setPopbutton(menuButton.modelData.tag)
                    }
                }
            }
            Rectangle {
                objectName: "layoutButton"
                width: 44; height: 34
                radius: 17
                color: layoutArea.pressed ? Theme.pressedOnDark : Theme.barButton
                // Grid mode offers the list, list mode the grid.
                Grid {
                    anchors.centerIn: parent
                    visible: view.gridMode
                    columns: 1
                    spacing: 3
                    Repeater {
                        model: 3
                        Rectangle { width: 18; height: 3; radius: 1.5; color: Theme.iconOnDark }
                    }
                }
                Grid {
                    anchors.centerIn: parent
                    visible: !view.gridMode
                    columns: 2
                    spacing: 3
                    Repeater {
                        model: 4
                        Rectangle { width: 7; height: 7; radius: 1.5; color: Theme.iconOnDark }
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

        // The footer lies in the bottom margin, under the last row.
        bottomMargin: footer.height

        readonly property bool pulledDown: contentY < originY - 65
        readonly property real overshoot: contentY + height - (originY + contentHeight + bottomMargin)
        readonly property bool pulledUp: count > 0 && overshoot > 65

        delegate: SortComicCell {
            required property int index
            width: grid.cellWidth - 12
            height: grid.cellHeight - 12
            gridMode: view.gridMode
            comicIndex: index
            fontFamily: view.fontFamily
            onTapped: view.sort.executeDown(comicIndex)
        }

        // Under the last row: the pull-up prompt, or the end of the category
        // when a page brought nothing (in place of the prompt, so that it
        // covers no comic).
        Item {
            id: footer
            objectName: "sortFooter"
            parent: grid.contentItem
            y: grid.originY + grid.contentHeight
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
                color: Theme.textHint
                font.family: view.fontFamily
                font.pixelSize: Theme.fontMedium
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
            if (atYEnd && !dragging && count > 0 && contentHeight + bottomMargin > height && view.sort && view.sort.hasFooter)
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
                color: Theme.textHint
                font.family: view.fontFamily
                font.pixelSize: Theme.fontMedium
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
        visible: filters.count > 0
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        height: visible ? flow.height + 36 : 0
        color: Theme.card
        Rectangle { anchors.top: parent.bottom; width: parent.width; height: 10
            gradient: Gradient {
                GradientStop { position: 0; color: Theme.barShadow }
                GradientStop { position: 1; color: Theme.barShadowEnd }
            }
        }
        Flow {
            id: flow
            x: 22; y: 18
            width: parent.width - 44
            spacing: Theme.spacing
            Repeater {
                id: filters
                model: !view.sort ? []
                       : view.sort.openMenu === 116 ? view.sort.themeButtons
                       : view.sort.openMenu === 117 ? view.sort.serialButtons
                       : view.sort.openMenu === 115 ? view.sort.sortButtons : []
                delegate: Rectangle {
                    id: filterButton
                    required property sortButton modelData
                    objectName: "filter" + modelData.tag
                    readonly property bool current: view.sort && view.sort.btnInt === filterButton.modelData.tag
                    width: Math.max(88, label.implicitWidth + 32)
                    height: 40
                    radius: 20
                    color: filterButton.current ? Theme.accent : (filterArea.pressed ? Theme.accentSoft : Theme.card)
                    border.color: filterButton.current ? Theme.accent : Theme.surfaceBorder
                    Text {
                        id: label
                        anchors.centerIn: parent
                        text: filterButton.modelData.title
                        color: filterButton.current ? Theme.textOnDark : Theme.textPrimary
                        font.family: view.fontFamily
                        font.pixelSize: Theme.fontLarge
                    }
                    MouseArea {
                        id: filterArea
                        anchors.fill: parent
                        onClicked: view.sort.switchFilter(filterButton.modelData.tag)
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
        color: Theme.popupBackground
        Text {
            id: panelText
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 48)
            elide: Text.ElideRight
            text: view.sort ? view.sort.textPanel : ""
            color: Theme.textOnDark
            font.family: view.fontFamily
            font.pixelSize: Theme.fontMedium
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
