import QtQuick
import Quorin

// The tucao menu bar (VORATuCaoMenuView): the chapter's title and page, the
// page's tucao count, show/hide and play/pause, the previous and next group
// of tucao and the way to write one. The buttons' pictures are drawn here;
// each button carries the picture name the menu gives it (showButtonPicture,
// playButtonPicture and their pressed variants) as `picture`.
Rectangle {
    id: root
    property VORATuCaoMenuView menu
    property string fontFamily
    readonly property bool landscape: width > 900

    width: parent ? parent.width : 768
    height: 64
    color: Theme.readerBarBackground
    MouseArea { anchors.fill: parent } // taps on the bar stay on the bar
    Rectangle { width: parent.width; height: 2; color: Theme.accent; opacity: 0.8 }

    // A picture of the bar, drawn after its name.
    component Glyph: Canvas {
        property string picture
        property color tint: Theme.iconOnDark
        width: 26; height: 26
        onPictureChanged: requestPaint()
        onTintChanged: requestPaint()
        onPaint: {
            const c = getContext("2d");
            c.reset();
            c.strokeStyle = tint;
            c.fillStyle = tint;
            c.lineWidth = 2.2;
            c.lineCap = "round";
            c.lineJoin = "round";
            const w = width, h = height;
            const name = picture.replace("pressed", "").replace(".png", "");
            if (name === "tucaohide" || name === "tucaoshow") {
                // An eye; struck through when it hides the tucao.
                c.beginPath();
                c.moveTo(2, h / 2);
                c.quadraticCurveTo(w / 2, h * 0.05, w - 2, h / 2);
                c.quadraticCurveTo(w / 2, h * 0.95, 2, h / 2);
                c.stroke();
                c.beginPath();
                c.arc(w / 2, h / 2, 3.5, 0, Math.PI * 2);
                c.fill();
                if (name === "tucaohide") {
                    c.beginPath();
                    c.moveTo(4, h - 3);
                    c.lineTo(w - 4, 3);
                    c.stroke();
                }
            } else if (name === "tucaostart") {
                // Playing: the pause bars.
                c.fillRect(w * 0.26, h * 0.2, w * 0.16, h * 0.6);
                c.fillRect(w * 0.58, h * 0.2, w * 0.16, h * 0.6);
            } else if (name === "tucaosuspend") {
                // Paused: the play triangle.
                c.beginPath();
                c.moveTo(w * 0.3, h * 0.18);
                c.lineTo(w * 0.8, h / 2);
                c.lineTo(w * 0.3, h * 0.82);
                c.closePath();
                c.fill();
            } else if (name === "previous" || name === "next") {
                c.beginPath();
                const dir = name === "next" ? 1 : -1;
                const cx = w / 2;
                c.moveTo(cx - dir * 4, h * 0.22);
                c.lineTo(cx + dir * 5, h / 2);
                c.lineTo(cx - dir * 4, h * 0.78);
                c.stroke();
            } else if (name === "write") {
                // A speech bubble with a pen line.
                c.beginPath();
                c.moveTo(3, 4);
                c.lineTo(w - 3, 4);
                c.lineTo(w - 3, h - 9);
                c.lineTo(10, h - 9);
                c.lineTo(5, h - 3);
                c.lineTo(6, h - 9);
                c.lineTo(3, h - 9);
                c.closePath();
                c.stroke();
                c.beginPath();
                c.moveTo(8, h / 2 - 3);
                c.lineTo(w - 8, h / 2 - 3);
                c.stroke();
            }
        }
    }

    component BarButton: Item {
        id: button
        property string name
        property string picture
        property string pressedPicture: picture
        property string label
        property string family
        signal clicked()
        readonly property bool down: area.pressed
        objectName: name
        width: 58
        height: 64
        Rectangle {
            anchors.centerIn: parent
            width: 52; height: 52; radius: Theme.radiusCard
            color: button.down ? Theme.lineOnDark : "transparent"
        }
        Glyph {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 8
            picture: button.down ? button.pressedPicture : button.picture
            tint: button.down ? Theme.accent : Theme.iconOnDark
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 40
            text: button.label
            color: Theme.readerBarText
            font.family: button.family
            font.pixelSize: Theme.fontTiny
        }
        MouseArea {
            id: area
            anchors.fill: parent
            onClicked: button.clicked()
        }
    }

    Column {
        x: 18
        width: buttons.x - x - 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        Text {
            objectName: "tucaoMenuTitle"
            width: parent.width
            text: root.menu ? root.menu.title : ""
            color: Theme.textOnDark
            font.family: root.fontFamily
            font.pixelSize: Theme.fontTitle
            font.bold: true
            elide: Text.ElideRight
        }
        Row {
            spacing: Theme.spacing
            Text {
                objectName: "tucaoMenuPage"
                text: root.menu ? root.menu.pageLabel : ""
                color: Theme.readerBarTextMuted
                font.family: root.fontFamily
                font.pixelSize: Theme.fontSmall
            }
            Text {
                objectName: "tucaoMenuTotal"
                text: root.menu ? "吐槽 " + root.menu.tucaoTotal : ""
                color: Theme.accentOnDarkSoft
                font.family: root.fontFamily
                font.pixelSize: Theme.fontSmall
            }
        }
    }

    Row {
        id: buttons
        anchors.right: write.left
        anchors.rightMargin: 10
        height: parent.height
        spacing: root.landscape ? 4 : 0
        BarButton {
            name: "tucaoShowButton"
            family: root.fontFamily
            picture: root.menu ? root.menu.showButtonPicture : ""
            pressedPicture: root.menu ? root.menu.showButtonPressedPicture : ""
            label: root.menu && root.menu.showTucaoflag ? "隐藏" : "显示"
            onClicked: root.menu.showTucaoBtn()
        }
        BarButton {
            name: "tucaoPlayButton"
            family: root.fontFamily
            picture: root.menu ? root.menu.playButtonPicture : ""
            pressedPicture: root.menu ? root.menu.playButtonPressedPicture : ""
            label: root.menu && root.menu.playTucaoflag ? "暂停" : "播放"
            opacity: root.menu && root.menu.showTucaoflag ? 1 : 0.4
            onClicked: root.menu.playTucaoBtn()
        }
        BarButton {
            name: "tucaoPreviousButton"
            family: root.fontFamily
            picture: "previous"
            label: "上一页"
            opacity: root.menu && root.menu.showTucaoflag ? 1 : 0.4
            onClicked: root.menu.lastPageTucaoBtn()
        }
        BarButton {
            name: "tucaoNextButton"
            family: root.fontFamily
            picture: "next"
            label: "下一页"
            opacity: root.menu && root.menu.showTucaoflag ? 1 : 0.4
            onClicked: root.menu.nextPageTucaoBtn()
        }
    }

    Rectangle {
        id: write
        objectName: "tucaoWriteButton"
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 108; height: 40; radius: 20
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0; color: writeArea.pressed ? Theme.accentPressed : Theme.accent }
            GradientStop { position: 1; color: Theme.accentGradientEnd }
        }
        Row {
            anchors.centerIn: parent
            spacing: 6
            Glyph {
                anchors.verticalCenter: parent.verticalCenter
                width: 22; height: 22
                picture: "write"
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "写吐槽"
                color: Theme.textOnDark
                font.family: root.fontFamily
                font.pixelSize: Theme.fontMedium
                font.bold: true
            }
        }
        MouseArea {
            id: writeArea
            anchors.fill: parent
            onClicked: root.menu.writeTucaoBtn()
        }
    }
}
