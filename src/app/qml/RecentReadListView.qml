import QtQuick
import Quorin

// The recent-reading screen (VORARecendRead): the comics last opened, each at
// the chapter and page reached.
ReadingPlaceList {
    property VORARecendRead recendReadView
    screen: recendReadView
    countUnit: "本"
}
