pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The wallet's history lists over the dimming layer: a tab per list, the
// balance the site reported, the rows newest first. The next page is asked for
// whenever the end of the list comes into view, by a finger or by the wheel.
Item {
    id: root
    property VORAWalletHistoryModel history
    property VORARootViewController rootController
    property string fontFamily

    readonly property int kind: history ? history.kind : VORAWalletHistoryModel.CoinLog

    // The end line in view asks for the next page; the model ignores the call
    // while a page is on its way, after the last one, and after a failure
    // (the retry button asks again).
    function loadMoreAtEnd() {
        if (history && list.atYEnd && history.message === "")
            history.loadMore()
    }

    // Taps and the wheel beside the panel stay here: nothing under the screen
    // moves, and a slip does not lose what the panel shows.
    MouseArea {
        anchors.fill: parent
        onWheel: (wheel) => wheel.accepted = true
    }

    Rectangle {
        id: panel
        objectName: "walletPanel"
        width: Math.min(780, root.width - 32)
        height: Math.min(700, root.height - 32)
        anchors.centerIn: parent
        radius: Theme.radiusPanel
        color: Theme.surface
        border.color: Theme.surfaceBorder
        clip: true

        Rectangle {
            id: head
            width: parent.width
            height: 60
            color: Theme.barBackground
            radius: Theme.radiusPanel
            Rectangle { width: parent.width; height: parent.radius; anchors.bottom: parent.bottom; color: parent.color }
            Row {
                x: 12
                height: parent.height
                spacing: 4
                Repeater {
                    model: ["消费记录", "充值记录", "月票记录"]
                    delegate: Rectangle {
                        id: tab
                        required property int index
                        required property string modelData
                        readonly property bool current: root.kind === tab.index
                        objectName: "walletTab" + index
                        anchors.verticalCenter: parent.verticalCenter
                        width: tabText.implicitWidth + 32
                        height: 42
                        radius: Theme.radiusButton
                        color: tab.current ? Theme.accent : (tabArea.pressed ? Theme.pressedOnDarkStrong : "transparent")
                        Text {
                            id: tabText
                            anchors.centerIn: parent
                            text: tab.modelData
                            color: Theme.textOnDark
                            font.family: root.fontFamily
                            font.pixelSize: Theme.fontLarge
                            font.bold: tab.current
                        }
                        MouseArea {
                            id: tabArea
                            anchors.fill: parent
                            onClicked: if (!tab.current) root.rootController.openWalletHistory(tab.index)
                        }
                    }
                }
            }
            Text {
                objectName: "walletClose"
                anchors.right: parent.right
                anchors.rightMargin: 22
                anchors.verticalCenter: parent.verticalCenter
                text: "关闭"
                color: Theme.accentOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontTitle
                font.bold: true
                MouseArea {
                    anchors.fill: parent
                    anchors.margins: -10
                    onClicked: root.rootController.closeWalletHistory()
                }
            }
        }

        Text {
            id: balance
            objectName: "walletBalance"
            x: 24
            y: head.height
            width: panel.width - 48
            height: 48
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            text: !root.history ? ""
                  : root.kind === VORAWalletHistoryModel.RechargeLog ? (root.history.total > 0 ? "共" + root.history.total + "笔充值" : "")
                  : root.history.balance < 0 ? ""
                  : (root.kind === VORAWalletHistoryModel.CoinLog ? "quorin币余额 " : "剩余月票 ") + root.history.balance
            color: Theme.textPrimary
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTitle
            font.bold: true
        }
        Rectangle { y: balance.y + balance.height; width: panel.width; height: 1; color: Theme.separator }

        ListView {
            id: list
            objectName: "walletList"
            y: balance.y + balance.height + 1
            width: panel.width
            height: panel.height - y
            clip: true
            model: root.history
            boundsBehavior: Flickable.StopAtBounds
            // Room for the end line under the last row, so it covers none.
            bottomMargin: endLine.height
            // A page (20 rows) always fills the list, so arriving at the end
            // is what asks: a row count that changed has not been laid out yet.
            onAtYEndChanged: root.loadMoreAtEnd()

            delegate: Rectangle {
                id: row
                required property int index
                required property string timeText
                required property string title
                required property int amount
                required property string detail
                objectName: "walletRow" + index
                width: list.width
                height: 72
                color: row.index % 2 ? Theme.surfaceAlt : Theme.surface
                Text {
                    id: rowTitle
                    x: 24
                    y: 12
                    width: row.width - 24 - amountText.width - 40
                    elide: Text.ElideRight
                    text: row.title
                    color: Theme.textPrimary
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontLarge
                }
                Text {
                    x: 24
                    y: rowTitle.y + rowTitle.height + 6
                    width: rowTitle.width
                    elide: Text.ElideRight
                    text: row.detail === "" ? row.timeText : row.timeText + "   " + row.detail
                    color: Theme.textTertiary
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontSmall
                }
                Text {
                    id: amountText
                    anchors.right: parent.right
                    anchors.rightMargin: 24
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.kind === VORAWalletHistoryModel.CoinLog ? (row.amount > 0 ? "+" : "") + row.amount
                          : root.kind === VORAWalletHistoryModel.RechargeLog ? "¥" + row.amount
                          : row.amount + "张"
                    color: row.amount < 0 ? Theme.danger : Theme.accentText
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    font.bold: true
                }
                Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
            }

            // Under the last row: loading, the end, or the failure with a retry.
            Item {
                id: endLine
                objectName: "walletEnd"
                parent: list.contentItem
                y: list.originY + list.contentHeight
                width: list.width
                height: 64
                Row {
                    anchors.centerIn: parent
                    spacing: 16
                    Text {
                        objectName: "walletEndText"
                        anchors.verticalCenter: parent.verticalCenter
                        text: !root.history ? ""
                              : root.history.message !== "" ? root.history.message
                              : root.history.busy ? "正在加载…"
                              : root.history.atEnd ? (root.history.count === 0 ? "还没有记录" : "就这么多")
                              : ""
                        color: root.history && root.history.message !== "" ? Theme.danger : Theme.textHint
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontMedium
                    }
                    PayButton {
                        objectName: "walletRetry"
                        visible: root.history !== null && root.history.message !== "" && !root.history.busy
                        width: 110
                        height: 40
                        text: "重试"
                        fontFamily: root.fontFamily
                        onClicked: root.history.loadMore()
                    }
                }
            }
        }
    }
}
