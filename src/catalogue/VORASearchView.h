#pragma once

#include "net/VORAHttpBaseWebServiceDelegate.h"

#include <QObject>
#include <QStringList>
#include <QThreadPool>

class VORACloudView;
class VORAComicListModel;
class VORAGetCloudTagService;
class VORAGetSearchKeyword;

Q_MOC_INCLUDE("catalogue/VORACloudView.h")
Q_MOC_INCLUDE("catalogue/VORAComicListModel.h")

// The search screen: a search field, the cloud of hot keywords, the search
// history panel and the result list.
//
// History rule: a search typed and submitted enters the history; a keyword
// picked from the cloud or from the history does not. The history file is
// read and written on a worker thread.
class VORASearchView : public QObject, public VORAHttpBaseWebServiceDelegate
{
    Q_OBJECT
    Q_PROPERTY(VORACloudView *cloudView READ cloudView CONSTANT)
    Q_PROPERTY(VORAComicListModel *results READ comicList CONSTANT)
    Q_PROPERTY(QString fieldText READ fieldText NOTIFY fieldTextChanged)
    Q_PROPERTY(QStringList searchHistoryArray READ searchHistoryArray NOTIFY historyChanged)
    Q_PROPERTY(bool historyVisible READ historyVisible NOTIFY historyChanged)
    Q_PROPERTY(bool resultsVisible READ resultsVisible NOTIFY resultsChanged)
    Q_PROPERTY(QString headerText READ headerText NOTIFY resultsChanged)
    Q_PROPERTY(bool noResult READ noResult NOTIFY resultsChanged)
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    Q_PROPERTY(int resultRowHeight READ resultRowHeight CONSTANT)
    Q_PROPERTY(int noResultRowHeight READ noResultRowHeight CONSTANT)
    Q_PROPERTY(bool landscape READ isLandscape NOTIFY orientationChanged)
public:
    static const QString requestFailedText; // "请求服务器失败，网络信号不是太好哟~"
    static const QString noNetworkText;     // "网络死掉了，请揉捏客户端或刷新重试"
    static constexpr int historyClearButtonTag = 554444;

    explicit VORASearchView(QObject *parent = nullptr);
    ~VORASearchView() override;

    VORACloudView *cloudView() const { return m_cloudView; }
    VORAComicListModel *comicList() const { return m_comicListArray; }
    QString fieldText() const { return m_fieldText; }
    QStringList searchHistoryArray() const { return m_searchHistoryArray; }
    bool historyVisible() const { return m_historyVisible; }
    bool resultsVisible() const { return m_resultsVisible; }
    QString keyString() const { return m_keyString; }
    QString headerText() const;
    bool noResult() const;
    bool searching() const { return m_searching; }
    int resultRowHeight() const { return 150; }
    int noResultRowHeight() const { return 300; }
    bool isLandscape() const { return m_landscape; }
    const VORAGetSearchKeyword *searchService() const { return m_searchService; }
    const VORAGetCloudTagService *cloudService() const { return m_cloudService; }

    // The hot keywords (every time the screen is switched to).
    Q_INVOKABLE void begainRequestData();
    // The search button with the field's text: enters the history.
    Q_INVOKABLE void searchButtonClicked(const QString &text);
    // A keyword from the cloud / from the history: not entered.
    Q_INVOKABLE void enterComicList(const QString &keyword);
    Q_INVOKABLE void enterComicListHistory(const QString &keyword);
    // Every change of the field's text decides what shows.
    Q_INVOKABLE void textDidChange(const QString &text);
    // The history panel's clear button.
    Q_INVOKABLE void clearnAllSearchHistory();
    Q_INVOKABLE void clearSearchHistory();
    // A tap on a result row.
    Q_INVOKABLE void openResult(int index);
    Q_INVOKABLE void comiclistOutView();
    Q_INVOKABLE void searchToOrientation(bool landscape);
    void begainRequestSearchListData(const QString &text);

    void requestDidFinishWithService(VORAHttpBaseWebService *service, const NetError *error) override;

signals:
    void fieldTextChanged();
    void historyChanged();
    void resultsChanged();
    void searchingChanged();
    void orientationChanged();
    void historyLoaded();
    void cloudAnswered();
    void searchAnswered();
    void requestFailed();
    // The keyboard closes.
    void resignKeyboard();
    void openComicRequested(const QString &comicId, const QString &comicName, const QString &comicCover);

private:
    void setFieldText(const QString &text);
    void setHistoryVisible(bool visible);
    void saveHistory();
    void setSearching(bool searching);

    VORAGetCloudTagService *m_cloudService = nullptr;
    VORAGetSearchKeyword *m_searchService = nullptr;
    VORACloudView *m_cloudView = nullptr;
    VORAComicListModel *m_comicListArray = nullptr;
    QThreadPool m_io;
    QString m_fieldText;
    QString m_keyString;
    QStringList m_searchHistoryArray;
    bool m_historyLoaded = false;
    bool m_historyVisible = false;
    bool m_resultsVisible = false;
    bool m_searching = false;
    bool m_landscape = true;
};
