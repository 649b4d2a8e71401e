#pragma once

// Shared pieces of the reading-session and page-loader suites: what a session
// tells its reader (the reader screen's side is RecordingHooks), and answers
// of the site's comic and chapter services made to order.

#include "ReaderPanelsTestSupport.h"
#include "reader/VORAReadComicManager.h"
#include "reader/VORAReadComicManagerDelegate.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

// Everything a session reports, in order.
class SessionRecorder : public VORAReadComicManagerDelegate
{
public:
    struct Page
    {
        std::optional<QByteArray> image;
        std::optional<QList<VORATucao>> tucao;
        int index = -1;
    };

    int infoCalls = 0;
    bool lastInfoFailed = false;
    QList<Page> pages;

    void comicInfoLoadDidFinishedWithError(VORAReadComicManager *, const NetError *error) override
    {
        ++infoCalls;
        lastInfoFailed = error != nullptr;
    }
    void pageLoadDidFinishedWithPage(VORAReadComicManager *, const std::optional<QByteArray> &imageData,
                                     const std::optional<QList<VORATucao>> &tucao, int pageIndex) override
    {
        pages.append({imageData, tucao, pageIndex});
    }
    const Page *page(int index) const
    {
        for (const Page &p : pages) {
            if (p.index == index)
                return &p;
        }
        return nullptr;
    }
};

namespace readertest {
inline const QString comicPath = QStringLiteral("ios/pad/comic_127.php");
inline const QString chapterPath = QStringLiteral("ios/pad/chapter_127.php");
inline const QString tucaoPath = QStringLiteral("ios/pad/get_tucao.php");
inline const QString buyPath = QStringLiteral("v3/app/ios/pad/buyChapter/buy");

// A comic answer of comic "777" with the given chapters ("chapter_id" and the
// rest filled in where missing).
inline QByteArray comicAnswer(qint64 isVip, const QList<QJsonObject> &chapters)
{
    QJsonArray list;
    int n = 0;
    for (QJsonObject c : chapters) {
        ++n;
        if (!c.contains("chapter_id"))
            c.insert("chapter_id", QString::number(9000 + n));
        if (!c.contains("name"))
            c.insert("name", QStringLiteral("第%1话").arg(n));
        list.append(c);
    }
    const QJsonObject comic{{"comic_id", "777"}, {"name", "测试漫画"}, {"is_vip", isVip}};
    return QJsonDocument(QJsonObject{{"code", 1}, {"comic", comic}, {"chapter_list", list}, {"top4", QJsonArray{}}})
        .toJson(QJsonDocument::Compact);
}

// A chapter answer whose "data" is the given value.
inline QByteArray chapterAnswer(const QJsonValue &data)
{
    return QJsonDocument(QJsonObject{{"code", 1}, {"data", data}}).toJson(QJsonDocument::Compact);
}

// Pages "p1".."pN" of a chapter answer.
inline QJsonArray pagesData(int count)
{
    QJsonArray data;
    for (int i = 1; i <= count; ++i)
        data.append(QJsonObject{{"image_id", QStringLiteral("p%1").arg(i)},
                                {"location", QStringLiteral("http://127.0.0.1:1/p%1.jpg").arg(i)},
                                {"width", 800},
                                {"height", 1130},
                                {"total_tucao", 0}});
    return data;
}

// Signs the global user in locally (no site): a key, coins and VIP mark.
inline void setLocalUser(bool signedIn, qint64 coins, bool vip)
{
    VORAUser *user = VORAAppGlobalData::shareAppGlobalData()->user();
    user->logonOut();
    if (signedIn)
        user->setKey(QStringLiteral("local-key"));
    user->setUserCoin(coins);
    user->setVipUser(vip ? QStringLiteral("1") : QStringLiteral("0"));
}
} // namespace readertest
