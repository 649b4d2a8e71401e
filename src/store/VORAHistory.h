#pragma once

#include <QCborValue>
#include <QStringList>

// The search history: at most 5 texts, newest first, no repeats. Archived as
// a map with the one field "historyListArray".
class VORAHistory
{
public:
    static constexpr int maxCount = 5;

    QStringList getAllSearchHistory() const { return m_historyListArray; }
    QStringList historyListArray() const { return m_historyListArray; }

    // Ignores the empty text; moves a text already present (exact,
    // case-sensitive) to the front; drops the oldest when 5 are held.
    void addSearchKey(const QString &text);
    // Empties the list; the caller saves.
    void cleanAllSearchHistory() { m_historyListArray.clear(); }

    QCborValue encodeWithCoder() const;
    // Tolerant: anything but a map with a list gives an empty history; entries
    // that are not texts, empty texts and repeats are dropped; at most 5 kept.
    static VORAHistory initWithCoder(const QCborValue &coder);

private:
    QStringList m_historyListArray;
};
