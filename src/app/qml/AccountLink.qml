import QtQuick
import Quorin

// A text link of the user panel ("注册", "忘记密码", "返回登录").
Text {
    id: link
    property string fontFamily
    signal clicked()

    color: area.pressed ? Theme.accentPressed : Theme.accentText
    font.family: link.fontFamily
    font.pixelSize: Theme.fontBody
    MouseArea {
        id: area
        anchors.fill: parent
        anchors.margins: -8
        onClicked: link.clicked()
    }
}
