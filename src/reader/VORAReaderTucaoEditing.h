#pragma once

#include "net/VORATucao.h"
#include "net/VORATucaoDTO.h"
#include "tucao/VORATucaoPagePlacement.h"
#include "tucao/VORATuCaoEditManager.h"
#include "tucao/VORATucaoPlayback.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>

class VORAPictureImageView;
class VORAReadHomePageViewController;
class VORATuCaoInputView;
class VORATucaoPublisher;
struct Notification;

// Writing, moving and deleting tucao in the reader: the input view, at most
// one editing act (VORATuCaoEditManager) and the publisher that sends it. An
// editing act belongs to the page it was opened on; the answers put the tucao
// back on that page (if its view is still there). A long press on one's own
// tucao ("PopUpTucaoEditView") opens an act on it.
class VORAReaderTucaoEditing : public QObject
{
    Q_OBJECT
public:
    // The reader gives the page on screen and the surface; it is the parent.
    explicit VORAReaderTucaoEditing(VORAReadHomePageViewController *reader);
    ~VORAReaderTucaoEditing() override;

    VORATuCaoInputView *tucaoInputView() const { return m_tucaoInputView; }
    VORATuCaoEditManager *tucaoEditManager() const { return m_tucaoEditManager; }
    VORATucaoPublisher *tucaoPublisher() const { return m_tucaoPublisher; }

    // The sign-in route for nobody signed in; else the page back at its
    // fitted zoom and the input view (tucaoInputRequested()).
    void popUpTucaoInputView();
    // The page on screen back at its fitted zoom.
    void resetComicViewWhenTucao();
    // A new tucao of this text placed at this point (screen points).
    void popUPTucaoEditViewWithPoint(const QString &text, const QPointF &point);
    // One's own tucao of the current page, long-pressed: off the page, zoom
    // reset, and an editing act opened on it. False when it is not there.
    bool showTucaoEditViewWithTucaoView(VORATucaoPlayback *playback, const QString &tucaoId);
    // The editing act's options, sent through the publisher.
    void publishTucao(const VORATucaoDTO &dto);
    void confirmEdit(const VORATucaoDTO &dto);
    void deleteTucao(const VORATucaoDTO &dto);
    // Cancelling an existing tucao's edit: it goes back on its page unsent.
    void cancelEdit(const VORATucao &tucao);
    // Closes the editing act (its menu collapses, then the layer goes).
    void hideEditTuCaoView();

signals:
    void tucaoEditChanged();
    void signInRequested();
    void tucaoInputRequested();

private:
    void onPopUpTucaoEditView(const Notification &n);
    void openTucaoEdit(VORATuCaoEditManager *edit, VORATucaoPlayback *playback);
    void dropTucaoEdit();
    VORATucaoPagePlacement tucaoPlacement(const VORAPictureImageView *view) const;

    VORAReadHomePageViewController *m_reader = nullptr;
    VORATuCaoInputView *m_tucaoInputView = nullptr;
    VORATucaoPublisher *m_tucaoPublisher = nullptr;
    QPointer<VORATuCaoEditManager> m_tucaoEditManager;
    // The page the editing act belongs to (its playback goes with the page view).
    QPointer<VORATucaoPlayback> m_tucaoEditPlayback;
    QString m_tucaoEditPageId;
};
