#pragma once

#include "net/VORAHttpBaseWebServiceDelegate.h"
#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "tucao/VORATucaoPagePlacement.h"

#include <QObject>
#include <QString>

#include <memory>

class VORAAddTucaoService;
class VORADeleteTucaoService;
class VORAUpdateTucaoService;

// The sending side of tucao editing, owned by the reader controller: publish a
// new tucao, send a moved or resized one, delete one, and tell the reader what
// the site answered.
//
// Records come in the page view's points and are converted with the current
// page's placement (setPagePlacement) before they are sent. The answer is shown
// as a short text-only notice:
//   add     transport error "吐槽发布失败，请检查网络是否通畅!"; code 1 "吐槽发布成功!"
//           and published(the tucao with the answer's id); else the answer's "message"
//   edit    "吐槽更新失败，请检查网络是否通畅"; code 1 "吐槽更新成功!" and updated(tucao);
//           else the answer's "message"
//   delete  "吐槽删除失败，请检查网络是否通畅"; code 1 "吐槽删除成功!" and deleted(id);
//           else the answer's "message"
// An answer without a message shows nothing. Every answer that arrives
// without a transport error emits closeEditRequested()
// (the edit panel closes); a transport error leaves the panel open for another
// try. A delete takes the tucao off the page at once (removedFromPage), before
// the answer. While a request of one kind is on its way, another of the same
// kind is refused (false). Ids that are not decimal digits are never sent.
class VORATucaoPublisher : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
public:
    static inline const QString publishSuccessText = QStringLiteral("吐槽发布成功!");
    static inline const QString publishFailureText = QStringLiteral("吐槽发布失败，请检查网络是否通畅!");
    static inline const QString updateSuccessText = QStringLiteral("吐槽更新成功!");
    static inline const QString updateFailureText = QStringLiteral("吐槽更新失败，请检查网络是否通畅");
    static inline const QString deleteSuccessText = QStringLiteral("吐槽删除成功!");
    static inline const QString deleteFailureText = QStringLiteral("吐槽删除失败，请检查网络是否通畅");
    // An id the site never gave (not decimal digits): nothing is sent.
    static inline const QString unknownTucaoText = QStringLiteral("吐槽不存在");
    static constexpr double noticeSeconds = 1.5;

    explicit VORATucaoPublisher(QObject *parent = nullptr);
    ~VORATucaoPublisher() override;

    void setPagePlacement(const VORATucaoPagePlacement &placement) { m_placement = placement; }
    const VORATucaoPagePlacement &pagePlacement() const { return m_placement; }

    bool publishTucao(const VORATucaoDTO &dto, const QString &pageId);
    bool confirmEdit(const VORATucaoDTO &dto);
    bool deleteTucao(const VORATucaoDTO &dto, const QString &comicId);

    // The record last sent (converted), with the id the answer gave it.
    const VORATucaoDTO &tucaoDTO() const { return m_tucaoDTO; }
    bool isSending() const;

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void published(const VORATucao &tucao);
    void updated(const VORATucao &tucao);
    void deleted(const QString &tucaoId);
    void removedFromPage(const QString &tucaoId);
    void closeEditRequested();
    // Every notice shown, for the reader's own use.
    void noticeShown(const QString &text);

private:
    void finishAdd(const NetError *error);
    void finishUpdate(const NetError *error);
    void finishDelete(const NetError *error);
    void notice(const QString &text);
    VORATucao tucaoFromRecord(const VORATucaoDTO &record) const;
    static bool isSiteId(const QString &id);

    VORATucaoPagePlacement m_placement;
    VORATucaoDTO m_tucaoDTO;
    VORAAddTucaoService *m_addService = nullptr;
    VORAUpdateTucaoService *m_updateService = nullptr;
    VORADeleteTucaoService *m_deleteService = nullptr;
};
