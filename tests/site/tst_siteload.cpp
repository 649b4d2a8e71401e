// Two clients fetch every image of the 60-page chapter at the same time: every
// answer is a whole image of the announced size, the same bytes for both, and
// a restarted site serves the same images from its cache directory.
#include "QuorinSite.h"
#include "SiteTestClient.h"

#include <QImage>
#include <QJsonArray>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QtTest>

class TestSiteLoad : public QObject
{
    Q_OBJECT
private slots:
    void twoClientsFetchASixtyPageChapter();
};

void TestSiteLoad::twoClientsFetchASixtyPageChapter()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QuorinSiteOptions options;
    options.dataDir = dir.path();
    auto site = std::make_unique<QuorinSite>(options);
    QVERIFY(site->listen());
    SiteTestClient probe(site->baseUrl());
    const QJsonArray pages = probe.get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40001"}, {"webp", "0"}})
                                 .json.value("data").toArray();
    QCOMPARE(pages.size(), 60);

    QNetworkAccessManager a, b;
    QList<QNetworkReply *> replies;
    for (const QJsonValue &v : pages) {
        const QUrl url(v.toObject().value("location").toString());
        replies << a.get(QNetworkRequest(url)) << b.get(QNetworkRequest(url));
    }
    QTRY_VERIFY_WITH_TIMEOUT(std::all_of(replies.cbegin(), replies.cend(), [](QNetworkReply *r) { return r->isFinished(); }),
                             180000);
    QList<QByteArray> first;
    for (int i = 0; i < replies.size(); ++i) {
        QNetworkReply *r = replies.at(i);
        QCOMPARE(r->error(), QNetworkReply::NoError);
        QCOMPARE(r->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200);
        const QByteArray bytes = r->readAll();
        const QJsonObject page = pages.at(i / 2).toObject();
        if (i % 2 == 0) {
            const QImage image = QImage::fromData(bytes);
            QVERIFY(!image.isNull());
            QCOMPARE(image.width(), page.value("width").toInt());
            QCOMPARE(image.height(), page.value("height").toInt());
            first << bytes;
        } else {
            QCOMPARE(bytes, first.last());
        }
        r->deleteLater();
    }

    // Drawn once: after a restart the same bytes come from the cache directory.
    site.reset();
    site = std::make_unique<QuorinSite>(options);
    QVERIFY(site->listen());
    SiteTestClient again(site->baseUrl());
    const QJsonArray pages2 = again.get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40001"}}).json.value("data").toArray();
    for (int i : {0, 7, 59})
        QCOMPARE(again.getRaw(QUrl(pages2.at(i).toObject().value("location").toString())).body, first.at(i));
}

QTEST_MAIN(TestSiteLoad)
#include "tst_siteload.moc"
