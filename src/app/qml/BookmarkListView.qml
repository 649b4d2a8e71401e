import QtQuick
import Quorin

// The bookmarks screen (VORABookMarkView): every page the reader marked.
ReadingPlaceList {
    property VORABookMarkView bookMarkView
    screen: bookMarkView
    countUnit: "个书签"
}
