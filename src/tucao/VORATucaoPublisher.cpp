#include "tucao/VORATucaoPublisher.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORAUtility.h"
#include "net/VORAAddTucaoService.h"
#include "net/VORADeleteTucaoService.h"
#include "net/VORAUpdateTucaoService.h"
#include "tucao/TucaoLog.h"
#include "tucao/VORATucaoGeometry.h"

#include <QDateTime>

VORATucaoPublisher::VORATucaoPublisher(QObject *parent)
    : QObject(parent)
{
}

VORATucaoPublisher::~VORATucaoPublisher()
{
    // A request still on its way reports to nobody; the services go with
    // this object, their parent.
    for (VORAHttpBaseWebService *s : {static_cast<VORAHttpBaseWebService *>(m_addService),
                                      static_cast<VORAHttpBaseWebService *>(m_updateService),
                                      static_cast<VORAHttpBaseWebService *>(m_deleteService)}) {
        if (s)
            s->cancelRequest();
    }
}

bool VORATucaoPublisher::isSending() const
{
    return m_addService || m_updateService || m_deleteService;
}

bool VORATucaoPublisher::isSiteId(const QString &id)
{
    if (id.isEmpty() || id.size() > 18)
        return false;
    for (QChar c : id) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

bool VORATucaoPublisher::publishTucao(const VORATucaoDTO &dto, const QString &pageId)
{
    if (m_addService)
        return false;
    m_tucaoDTO = VORATucaoGeometry::getNewTucaoDTO(dto, m_placement);
    m_tucaoDTO.updateTime = QDateTime::currentDateTimeUtc();
    if (m_tucaoDTO.userId.isEmpty())
        m_tucaoDTO.userId = VORAAppGlobalData::shareAppGlobalData()->user()->userId();
    m_addService = new VORAAddTucaoService(this);
    m_addService->objectId = pageId;
    m_addService->content = m_tucaoDTO.content;
    m_addService->createTime = m_tucaoDTO.updateTime;
    m_addService->x = m_tucaoDTO.x;
    m_addService->y = m_tucaoDTO.y;
    m_addService->width = m_tucaoDTO.width;
    m_addService->height = m_tucaoDTO.height;
    m_addService->asynchronousRequestWithDelegate(this);
    return true;
}

bool VORATucaoPublisher::confirmEdit(const VORATucaoDTO &dto)
{
    if (m_updateService)
        return false;
    if (!isSiteId(dto.tucaoId)) {
        qCWarning(lcTucao) << "not sending an edit of tucao" << dto.tucaoId << ": not an id of the site";
        notice(unknownTucaoText);
        emit closeEditRequested();
        return false;
    }
    m_tucaoDTO = VORATucaoGeometry::getNewTucaoDTO(dto, m_placement);
    m_updateService = new VORAUpdateTucaoService(this);
    m_updateService->tucaoId = m_tucaoDTO.tucaoId;
    m_updateService->x = m_tucaoDTO.x;
    m_updateService->y = m_tucaoDTO.y;
    m_updateService->width = m_tucaoDTO.width;
    m_updateService->height = m_tucaoDTO.height;
    m_updateService->asynchronousRequestWithDelegate(this);
    return true;
}

bool VORATucaoPublisher::deleteTucao(const VORATucaoDTO &dto, const QString &comicId)
{
    if (m_deleteService)
        return false;
    if (!isSiteId(dto.tucaoId) || (!comicId.isEmpty() && !isSiteId(comicId))) {
        qCWarning(lcTucao) << "not deleting tucao" << dto.tucaoId << "of comic" << comicId << ": not ids of the site";
        notice(unknownTucaoText);
        emit closeEditRequested();
        return false;
    }
    m_deleteService = new VORADeleteTucaoService(this);
    m_deleteService->tucaoId = dto.tucaoId;
    m_deleteService->comicId = comicId;
    m_deleteService->asynchronousRequestWithDelegate(this);
    // Off the page now, whatever the answer.
    emit removedFromPage(dto.tucaoId);
    return true;
}

void VORATucaoPublisher::requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error)
{
    if (service && service == m_addService)
        finishAdd(error);
    else if (service && service == m_updateService)
        finishUpdate(error);
    else if (service && service == m_deleteService)
        finishDelete(error);
}

void VORATucaoPublisher::finishAdd(const NetError *error)
{
    VORAAddTucaoService *service = m_addService;
    m_addService = nullptr;
    service->deleteLater();
    if (error) {
        qCWarning(lcTucao) << "publishing failed:" << error->localizedDescription;
        notice(publishFailureText);
        return;
    }
    if (service->code == 1) {
        notice(publishSuccessText);
        m_tucaoDTO.tucaoId = service->tucaoId;
        emit published(tucaoFromRecord(m_tucaoDTO));
    } else {
        notice(service->message);
    }
    emit closeEditRequested();
}

void VORATucaoPublisher::finishUpdate(const NetError *error)
{
    VORAUpdateTucaoService *service = m_updateService;
    m_updateService = nullptr;
    service->deleteLater();
    if (error) {
        qCWarning(lcTucao) << "updating failed:" << error->localizedDescription;
        notice(updateFailureText);
        return;
    }
    if (service->code == 1) {
        notice(updateSuccessText);
        m_tucaoDTO.tucaoId = service->tucaoId;
        emit updated(tucaoFromRecord(m_tucaoDTO));
    } else {
        notice(service->message);
    }
    emit closeEditRequested();
}

void VORATucaoPublisher::finishDelete(const NetError *error)
{
    VORADeleteTucaoService *service = m_deleteService;
    m_deleteService = nullptr;
    service->deleteLater();
    if (error) {
        qCWarning(lcTucao) << "deleting failed:" << error->localizedDescription;
        notice(deleteFailureText);
        return;
    }
    if (service->code == 1) {
        notice(deleteSuccessText);
        emit deleted(service->tucaoId);
    } else {
        notice(service->message);
    }
    emit closeEditRequested();
}

void VORATucaoPublisher::notice(const QString &text)
{
    if (text.isEmpty()) { // an answer without a message: nothing to show
        qCInfo(lcTucao) << "the answer carried no message";
        return;
    }
    VORAUtility::openMBProgressHUDView(text, noticeSeconds);
    emit noticeShown(text);
}

VORATucao VORATucaoPublisher::tucaoFromRecord(const VORATucaoDTO &record) const
{
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    VORATucao t;
    t.tucaoId = record.tucaoId;
    t.content = record.content;
    t.userId = record.userId;
    t.nickName = record.userId == user->userId() ? user->nickName() : QString();
    t.x = qint32(record.x);
    t.y = qint32(record.y);
    t.width = qint32(record.width);
    t.height = qint32(record.height);
    t.updateTime = record.updateTime;
    return t;
}
