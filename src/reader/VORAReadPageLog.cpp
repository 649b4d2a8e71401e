#include "reader/VORAReadPageLog.h"

#include "core/VORAAppGlobalData.h"
#include "net/VORAUploadReadLogSerVice.h"

VORAReadPageLog::VORAReadPageLog(QObject *parent)
    : QObject(parent)
{
}

VORAReadPageLog::~VORAReadPageLog() = default;

void VORAReadPageLog::addReadPageToList(qint64 pageIndex, const QString &chapterId, const QString &pageId,
                                        const QString &comicId)
{
    const QString key = QString::number(pageIndex) + QLatin1Char('_') + chapterId;
    if (m_readRecordKeyList.size() < maxRecords) {
        if (m_readRecordKeyList.contains(key))
            return;
        m_readRecordKeyList.append(key);
        m_readRecordValueList.append(QLatin1Char('i') + pageId);
        ++m_readPageCount;
        return;
    }
    // Ten held: this page is not recorded.
    if (VORAAppGlobalData::shareAppGlobalData()->user()->isLogin()) {
        uploadingReadHistoryInfo(comicId);
    } else {
        m_readRecordKeyList.clear();
        m_readPageCount = 0;
    }
}

void VORAReadPageLog::uploadingReadHistoryInfo(const QString &comicId)
{
    m_readPageCount = 0;
    if (m_readRecordKeyList.isEmpty())
        return;
    // One service per upload: an earlier one still under way is not cut short.
    auto *service = new VORAUploadReadLogSerVice(this);
    service->comicId = comicId;
    service->keyList = m_readRecordKeyList;
    service->valueList = m_readRecordValueList;
    service->asynchronousRequestWithDelegate(this);
}

void VORAReadPageLog::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *)
{
    // The answer, success or not, is of no interest.
    if (service && service->parent() == this)
        service->deleteLater();
}
