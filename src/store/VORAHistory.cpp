#include "VORAHistory.h"

#include <QCborArray>
#include <QCborMap>

namespace {
const QString kField = QStringLiteral("historyListArray");
}

void VORAHistory::addSearchKey(const QString &text)
{
    if (text.isEmpty())
        return;
    const qsizetype existing = m_historyListArray.indexOf(text);
    if (existing >= 0)
        m_historyListArray.removeAt(existing);
    if (m_historyListArray.size() == maxCount)
        m_historyListArray.removeLast();
    m_historyListArray.prepend(text);
}

QCborValue VORAHistory::encodeWithCoder() const
{
    QCborMap map;
    map.insert(kField, QCborArray::fromStringList(m_historyListArray));
    return map;
}

VORAHistory VORAHistory::initWithCoder(const QCborValue &coder)
{
    VORAHistory history;
    const QCborValue list = coder.toMap().value(kField);
    if (!list.isArray())
        return history;
    for (const QCborValue &entry : list.toArray()) {
        if (history.m_historyListArray.size() == maxCount)
            break;
        if (!entry.isString())
            continue;
        const QString text = entry.toString();
        if (!text.isEmpty() && !history.m_historyListArray.contains(text))
            history.m_historyListArray.append(text);
    }
    return history;
}
