// Other suites may run the site under a plain QCoreApplication and without a
// data directory: pages are then drawn without text (fonts need a
// QGuiApplication) but are still whole images.
#include "QuorinSite.h"
#include "SiteTestClient.h"

#include <QImage>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

class TestSiteGuiless : public QObject
{
    Q_OBJECT
private slots:
    void imagesWithoutAGuiApplication();
};

void TestSiteGuiless::imagesWithoutAGuiApplication()
{
    QVERIFY(!QCoreApplication::instance()->inherits("QGuiApplication"));
    QuorinSiteOptions options; // no data directory: the site makes a private temporary one
    QuorinSite site(options);
    QVERIFY(site.listen());
    SiteTestClient client(site.baseUrl());
    // A spread (page 8 of the first chapter) and a PNG page of a later chapter.
    const QJsonArray first = client.get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40001"}}).json.value("data").toArray();
    const QJsonArray png = client.get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40004"}}).json.value("data").toArray();
    for (const QJsonObject &page : {first.at(7).toObject(), png.at(0).toObject()}) {
        const auto r = client.getRaw(QUrl(page.value("location").toString()));
        QCOMPARE(r.status, 200);
        QImage image;
        QVERIFY(image.loadFromData(r.body));
        QCOMPARE(image.size(), QSize(page.value("width").toInt(), page.value("height").toInt()));
    }
}

QTEST_GUILESS_MAIN(TestSiteGuiless)
#include "tst_siteguiless.moc"
