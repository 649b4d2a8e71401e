pragma ComponentBehavior: Bound

import QtQuick
import Quorin

// The payment screen over the dimming layer: the packages of one kind, the
// order waiting in the browser, then the success. What it does is
// VORAPayViewController's; this file only draws it.
Item {
    id: root
    property VORAPayViewController pay
    property VORARootViewController rootController
    property string fontFamily

    readonly property int payState: pay ? pay.state : VORAPayViewController.Idle
    readonly property bool waiting: payState === VORAPayViewController.WaitingForPayment
                                    || payState === VORAPayViewController.Checking
    readonly property bool paid: payState === VORAPayViewController.Paid
    readonly property bool membership: pay !== null && pay.kind === VORAPayViewController.Membership
    readonly property bool compact: height < 640

    // Taps and the wheel beside the panel stay here: nothing under the screen
    // moves, and a slip does not lose what the panel shows.
    MouseArea {
        anchors.fill: parent
        onWheel: (wheel) => wheel.accepted = true
    }

    Rectangle {
        id: panel
        objectName: "payPanel"
        width: Math.min(680, root.width - 32)
        // As tall as the state's content, within the window.
        height: Math.min(root.height - 32, head.height + 20 + Math.max(200, root.waiting ? waitingColumn.height + 24
                                                                           : root.paid ? doneColumn.height + 40
                                                                           : packages.contentHeight) + 12 + footer.height + 12)
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
            Text {
                objectName: "payTitle"
                anchors.left: parent.left
                anchors.leftMargin: 24
                anchors.verticalCenter: parent.verticalCenter
                text: root.membership ? "开通会员" : "充值quorin币"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontDisplay
                font.bold: true
            }
            Row {
                anchors.right: parent.right
                anchors.rightMargin: 20
                anchors.verticalCenter: parent.verticalCenter
                spacing: 28
                Text {
                    objectName: "payHistory"
                    text: "充值记录"
                    color: Theme.textOnDarkSecondary
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontLarge
                    MouseArea {
                        anchors.fill: parent
                        anchors.margins: -10
                        onClicked: root.rootController.openWalletHistory(VORAWalletHistoryModel.RechargeLog)
                    }
                }
                Text {
                    objectName: "payClose"
                    text: "关闭"
                    color: Theme.accentOnDark
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontTitle
                    font.bold: true
                    MouseArea {
                        anchors.fill: parent
                        anchors.margins: -10
                        onClicked: root.rootController.closePay()
                    }
                }
            }
        }

        // The packages: one card each, the selected one outlined.
        GridView {
            id: packages
            objectName: "payPackages"
            visible: !root.waiting && !root.paid
            // Cards stand at the left of their cells: the margins come out even.
            x: 26
            y: head.height + 20
            width: panel.width - 40
            height: footer.y - y - 12
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.pay ? root.pay.packages : null
            cellWidth: Math.floor(width / (width >= 560 ? 3 : 2))
            cellHeight: root.compact ? 104 : 118
            delegate: Rectangle {
                id: card
                required property int index
                required property string title
                required property string priceText
                required property string discount
                readonly property bool selected: root.pay !== null && root.pay.selectedIndex === card.index
                objectName: "package" + index
                width: packages.cellWidth - 12
                height: packages.cellHeight - 12
                radius: Theme.radiusCard
                color: cardArea.pressed ? Theme.cardPressed : (card.selected ? Theme.accentPale : Theme.card)
                border.width: card.selected ? 3 : 1
                border.color: card.selected ? Theme.accent : Theme.cardBorder
                Column {
                    anchors.centerIn: parent
                    width: parent.width - 16
                    spacing: 4
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        elide: Text.ElideRight
                        text: card.title
                        color: Theme.textPrimary
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontLarge
                        font.bold: true
                    }
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        text: card.priceText
                        color: Theme.accentText
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontHeadline
                        font.bold: true
                    }
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        visible: card.discount !== ""
                        text: card.discount
                        color: Theme.danger
                        font.family: root.fontFamily
                        font.pixelSize: Theme.fontSmall
                    }
                }
                MouseArea {
                    id: cardArea
                    anchors.fill: parent
                    enabled: root.payState === VORAPayViewController.Choosing
                    onClicked: root.pay.selectedIndex = card.index
                }
            }
        }

        // The order waiting for the browser.
        Column {
            id: waitingColumn
            objectName: "payWaiting"
            visible: root.waiting
            x: 32
            y: head.height + 32
            width: panel.width - 64
            spacing: root.compact ? 14 : 20
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "请在浏览器中完成支付"
                color: Theme.textPrimary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontHeadingLarge
                font.bold: true
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.pay && root.pay.orderId !== "" ? "订单号 " + root.pay.orderId : ""
                color: Theme.textSecondary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontBody
            }
            PayButton {
                objectName: "payCheck"
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(320, parent.width)
                text: "我已完成支付"
                primary: true
                enabled: root.payState === VORAPayViewController.WaitingForPayment
                fontFamily: root.fontFamily
                onClicked: root.pay.checkPayment()
            }
            PayButton {
                objectName: "payReopen"
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(320, parent.width)
                text: "重新打开支付页面"
                enabled: root.payState === VORAPayViewController.WaitingForPayment
                fontFamily: root.fontFamily
                onClicked: root.pay.openPayPage()
            }
        }

        // Paid: the message says what was credited; the user closes the screen.
        Column {
            id: doneColumn
            objectName: "payDone"
            visible: root.paid
            x: 32
            y: head.height + 40
            width: panel.width - 64
            spacing: 24
            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 84; height: 84; radius: 42
                color: Theme.accent
                Text {
                    anchors.centerIn: parent
                    text: "✓"
                    color: Theme.textOnDark
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontDisplayLarge
                    font.bold: true
                }
            }
            Text {
                objectName: "payPaidMessage"
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.pay ? root.pay.message : ""
                color: Theme.textPrimary
                font.family: root.fontFamily
                font.pixelSize: Theme.fontHeadline
                font.bold: true
            }
        }

        // Under every state: the message, the busy ring while a request is out,
        // and the state's main button.
        Item {
            id: footer
            x: 24
            width: panel.width - 48
            // The main button is not there while an order waits: the message only.
            height: root.waiting ? 52 : root.compact ? 112 : 124
            y: panel.height - height - 12

            Row {
                id: messageRow
                width: parent.width
                height: 40
                spacing: 10
                Item {
                    id: spinner
                    objectName: "payBusy"
                    visible: root.pay !== null && root.pay.busy
                    width: visible ? 28 : 0
                    height: 28
                    anchors.verticalCenter: parent.verticalCenter
                    Rectangle {
                        anchors.fill: parent
                        radius: width / 2
                        color: "transparent"
                        border.width: 4
                        border.color: Theme.accentSoft
                    }
                    Rectangle { x: parent.width / 2 - 3; width: 6; height: 6; radius: 3; color: Theme.accent }
                    // Turns only while it shows: an idle screen animates nothing.
                    RotationAnimator on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite; running: spinner.visible }
                }
                Text {
                    objectName: "payMessage"
                    width: parent.width - spinner.width - parent.spacing
                    anchors.verticalCenter: parent.verticalCenter
                    horizontalAlignment: spinner.visible ? Text.AlignLeft : Text.AlignHCenter
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    visible: !root.paid
                    text: root.pay ? root.pay.message : ""
                    color: Theme.textBody
                    font.family: root.fontFamily
                    font.pixelSize: Theme.fontBody
                }
            }

            PayButton {
                objectName: root.paid ? "payFinish" : "payPlaceOrder"
                visible: !root.waiting
                anchors.bottom: parent.bottom
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(360, parent.width)
                primary: true
                text: root.paid ? "完成" : "立即支付"
                enabled: root.paid || (root.payState === VORAPayViewController.Choosing && root.pay.selectedIndex >= 0)
                fontFamily: root.fontFamily
                onClicked: root.paid ? root.rootController.closePay() : root.pay.placeOrder()
            }
        }
    }
}
