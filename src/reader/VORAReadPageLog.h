#pragma once

#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QObject>
#include <QString>
#include <QStringList>

// The pages read in the reader, sent to the site with VORAUploadReadLogSerVice
// ("ios/pad/image_log.php"). A record is a key "<page index>_<chapter id>" and
// a value "i<page id>"; value i belongs to key i.
//
// Up to ten distinct keys are collected. A page shown once ten are held is not
// recorded: a signed-in reader's ten are uploaded again (the lists are never
// cleared by an upload), a signed-out reader's keys are dropped (the values
// stay) and the count starts again. Answers of the upload are ignored.
//
// Main thread only.
class VORAReadPageLog : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
public:
    static constexpr int maxRecords = 10;

    explicit VORAReadPageLog(QObject *parent = nullptr);
    ~VORAReadPageLog() override;

    // One page shown.
    void addReadPageToList(qint64 pageIndex, const QString &chapterId, const QString &pageId,
                           const QString &comicId);
    // Sends the records of comicId when there are any; the count becomes 0.
    void uploadingReadHistoryInfo(const QString &comicId);

    const QStringList &readRecordKeyList() const { return m_readRecordKeyList; }
    const QStringList &readRecordValueList() const { return m_readRecordValueList; }
    int readPageCount() const { return m_readPageCount; }

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

private:
    QStringList m_readRecordKeyList;
    QStringList m_readRecordValueList;
    int m_readPageCount = 0;
};
