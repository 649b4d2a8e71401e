// Walks the whole demo catalogue over HTTP and checks every answer against the
// form the client reads: identifiers as decimal text, the top-level keys of the
// ".php" services, the nested data/stateCode/returnData of the "v3/app/" ones.
// One table then asks that the demo holds every kind of comic, chapter, page
// and slide the client has a rule for.
#include "QuorinSite.h"
#include "SiteShape.h"
#include "SiteTestClient.h"

#include <QDateTime>
#include <QImage>
#include <QJsonArray>
#include <QSet>
#include <memory>
#include <QtTest>

namespace {
const char *const kListItem = "comic_id:d name:s cover:u author_name:s description:s accredit:b click_total:i last_update_time:i";
const char *const kComic = "name:s author_name:s cover:u ori:u theme_ids:s series_status:i read_order:i first_letter:s "
                           "description:s click_total:i total_tucao:i comment_total:i total_ticket:i is_vip:i group_ids:s "
                           "last_update_chapter_id:s last_update_chapter_name:s thread:o last_update_time:i";
const char *const kChapter = "chapter_id:d name:s image_total:i size:i buyed:i type:i is_view:i price:i release_time:i pass_time:N";
const char *const kPage = "image_id:d location:u width:i height:i total_tucao:i";
const char *const kTucao = "tucao_id:d content:s user_id:d nickname:s x:i y:i width:i height:i color:i back:i ceate_time:i";
}

class TestSiteCatalogue : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void listPagesThroughEveryFilter_data();
    void listPagesThroughEveryFilter();
    void walkKeepsTheClientsShapes();
    void everyKindIsInTheDemo_data();
    void everyKindIsInTheDemo();
    void tucaoFirstPageNewestFirst();
    void imagesDecodeAtTheAnnouncedSize();
    void sameSeedSameCatalogue();

private:
    QJsonObject comic(const QString &id);
    std::unique_ptr<QuorinSite> m_site;
    std::unique_ptr<SiteTestClient> m_client;
    QString m_base;
    QMap<QString, int> m_census;  // how many of each kind the walk met
    QList<QJsonObject> m_pages;   // pages the walk met, for the image checks
};

void TestSiteCatalogue::initTestCase()
{
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions()); // on a private temporary directory
    QVERIFY(m_site->listen() != 0);
    m_base = m_site->baseUrl().toString();
    QVERIFY(m_base.startsWith(QLatin1String("http://127.0.0.1:")));
    m_client = std::make_unique<SiteTestClient>(m_site->baseUrl());
}

QJsonObject TestSiteCatalogue::comic(const QString &id)
{
    return m_client->get(QStringLiteral("ios/pad/comic_127.php"), {{"comic_id", id}}).json;
}

void TestSiteCatalogue::listPagesThroughEveryFilter_data()
{
    QTest::addColumn<QString>("argname");
    QTest::addColumn<QString>("argval");
    QTest::addColumn<bool>("complete"); // whether the filter lists the whole catalogue
    QTest::newRow("no filter") << QString() << QString() << true;
    for (const char *code : {"0", "1", "20", "4", "5", "7", "9", "23"})
        QTest::addRow("sort %s", code) << "sort" << code << true;
    for (const char *code : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "11", "12"})
        QTest::addRow("theme %s", code) << "theme" << code << false;
    for (const char *code : {"1", "2", "3", "4"})
        QTest::addRow("cate %s", code) << "cate" << code << false;
    QTest::newRow("serial 0") << "serial" << "0" << false;
    QTest::newRow("serial 1") << "serial" << "1" << false;
}

void TestSiteCatalogue::listPagesThroughEveryFilter()
{
    QFETCH(QString, argname);
    QFETCH(QString, argval);
    QFETCH(bool, complete);
    QSet<QString> ids;
    qint64 total = -1;
    for (int page = 0; page < 20; ++page) {
        QList<QPair<QString, QString>> params{{"from", "appstore4"}, {"page", QString::number(page)}, {"size", "7"}};
        if (!argname.isEmpty())
            params << qMakePair(QStringLiteral("argname"), argname) << qMakePair(QStringLiteral("argval"), argval);
        const auto r = m_client->get(QStringLiteral("ios/pad/list.php"), params);
        QCOMPARE(r.status, 200);
        QVERIFY(r.isObject);
        QCOMPARE(r.json.value("code").toInt(), 1);
        QVERIFY_SHAPE(r.json, "total:i data:a");
        QVERIFY(!r.json.contains("slide_data")); // only asked for with slide=1
        total = r.json.value("total").toInteger();
        const QJsonArray data = r.json.value("data").toArray();
        if (data.isEmpty()) {
            QCOMPARE(qint64(ids.size()), total); // the end is an empty page, after every comic
            break;
        }
        QVERIFY(data.size() <= 7);
        for (const QJsonValue &v : data) {
            QVERIFY_SHAPE(v.toObject(), kListItem, m_base);
            const QString id = v.toObject().value("comic_id").toString();
            QVERIFY2(!ids.contains(id), "a comic appears on two pages");
            ids.insert(id);
            if (argname == QLatin1String("theme"))
                QVERIFY(v.toObject().value("theme_ids").toString().split(',').contains(argval));
            if (argname == QLatin1String("serial"))
                QCOMPARE(v.toObject().value("series_status").toInt(), argval.toInt());
        }
    }
    if (complete)
        QCOMPARE(ids.size(), 60);
    else
        QVERIFY(ids.size() < 60);
}

void TestSiteCatalogue::walkKeepsTheClientsShapes()
{
    // The feed's hot tab (sort 7 by clicks) with its slides; every slide opens.
    const auto hot = m_client->get(QStringLiteral("ios/pad/list.php"),
                                   {{"argname", "sort"}, {"argval", "7"}, {"from", "appstore4"}, {"page", "0"}, {"size", "30"}, {"slide", "1"}});
    QCOMPARE(hot.json.value("data").toArray().size(), 30);
    qint64 previous = qint64(1) << 40;
    for (const QJsonValue &v : hot.json.value("data").toArray()) {
        const qint64 clicks = v.toObject().value("click_total").toInteger();
        QVERIFY(clicks <= previous + 1000); // ordered by clicks (a small jitter breaks ties)
        previous = clicks;
    }
    for (const QJsonValue &v : hot.json.value("slide_data").toArray()) {
        const QJsonObject s = v.toObject();
        QVERIFY_SHAPE(s, "comic_id:s comic_name:s image:u title:s url:s sort:i type:b", m_base);
        if (s.value("type").toString() == QLatin1String("0")) {
            ++m_census["comic slides"];
            QCOMPARE(comic(s.value("comic_id").toString()).value("code").toInt(), 1);
        } else {
            ++m_census["link slides"];
            QCOMPARE(m_client->getRaw(QUrl(s.value("url").toString())).status, 200);
        }
    }

    // Every comic as a visitor sees it, and every third chapter as the paying
    // member reads it: sealed chapters open to the member, unbought paid ones do not.
    SiteTestClient vip(m_site->baseUrl());
    QVERIFY(!vip.signIn("vip", "vip123").isEmpty());
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const auto list = m_client->get(QStringLiteral("ios/pad/list.php"), {{"page", "0"}, {"size", "100"}});
    for (const QJsonValue &v : list.json.value("data").toArray()) {
        const QString id = v.toObject().value("comic_id").toString();
        const QJsonObject answer = comic(id);
        QCOMPARE(answer.value("code").toInt(), 1);
        const QJsonObject c = answer.value("comic").toObject();
        QVERIFY_SHAPE(c, kComic, m_base);
        QVERIFY_SHAPE(c.value("thread").toObject(), "thread_id:d name:s");
        const int vipClass = c.value("is_vip").toInt();
        ++m_census[QStringLiteral("comics of class %1").arg(vipClass)];
        QVERIFY(answer.value("top4").isArray());
        for (const QJsonValue &t : answer.value("top4").toArray())
            QVERIFY_SHAPE(t.toObject(), "comic_id:d chapter_id:d location:u", m_base);
        for (const QJsonValue &cv : answer.value("chapter_list").toArray()) {
            const QJsonObject ch = cv.toObject();
            QVERIFY_SHAPE(ch, kChapter);
            if (ch.value("image_total").toInt() == 60)
                ++m_census["sixty-page chapters"];
            if (ch.value("pass_time").isNull())
                ++m_census["chapters without a pass time"];
            if (ch.value("type").toInt() == 2) {
                QVERIFY(vipClass == 1 || vipClass == 2);
                QCOMPARE(ch.value("buyed").toInt(), -1); // nobody signed in
                ++m_census[ch.value("price").toInt() == 0 ? "paid chapters at price 0" : "paid chapters"];
                if (ch.value("price").toInt() != 0)
                    QCOMPARE(ch.value("is_view").toInt(), 0);
            } else {
                QCOMPARE(ch.value("buyed").toInt(), 0);
            }
            if (vipClass == 3) {
                const qint64 d = now - qMax(ch.value("release_time").toInteger(), ch.value("pass_time").toInteger());
                ++m_census[d < -86399 ? "chapters not yet out" : d <= 604799 ? "chapters sealed now" : "chapters out of the seal"];
                if (d >= -86399 && d <= 604799)
                    QCOMPARE(ch.value("is_view").toInt(), 0);
            }
        }
        const QJsonArray chapters = vip.get(QStringLiteral("ios/pad/comic_127.php"), {{"comic_id", id}}).json.value("chapter_list").toArray();
        for (int i = 0; i < chapters.size(); i += 3) {
            const QJsonObject ch = chapters.at(i).toObject();
            const auto r = vip.get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", ch.value("chapter_id").toString()}, {"webp", "0"}});
            QVERIFY(r.isObject);
            if (ch.value("is_view").toInt() == 0) {
                QCOMPARE(r.json.value("code").toInt(), 0);
                QVERIFY(!r.json.value("message").toString().isEmpty());
                QVERIFY(!r.json.contains("data"));
                ++m_census["chapters refused to the member"];
                continue;
            }
            QCOMPARE(r.json.value("code").toInt(), 1);
            const QJsonArray pages = r.json.value("data").toArray();
            QCOMPARE(pages.size(), ch.value("image_total").toInt());
            ++m_census["chapters listed to the member"];
            for (const QJsonValue &pv : pages) {
                const QJsonObject p = pv.toObject();
                QVERIFY_SHAPE(p, kPage, m_base);
                const QString format = p.value("location").toString().section('.', -1);
                QVERIFY2(QStringList({"jpg", "png", "webp"}).contains(format), qPrintable(format));
                ++m_census[format + " pages"];
                const int w = p.value("width").toInt(), h = p.value("height").toInt();
                m_census["spreads"] += w > h;
                m_census["tall pages"] += h > 2 * w;
                m_census["pages with over 200 tucao"] += p.value("total_tucao").toInt() > 200;
                if (m_pages.size() < 400)
                    m_pages.append(p);
            }
        }
    }
    // webp=1 asks for WebP locations of every page.
    const auto webp = m_client->get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40001"}, {"webp", "1"}});
    for (const QJsonValue &pv : webp.json.value("data").toArray())
        QVERIFY(pv.toObject().value("location").toString().endsWith(".webp"));
}

void TestSiteCatalogue::everyKindIsInTheDemo_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    const int many = 1 << 20;
    const QList<std::tuple<const char *, int, int>> rows{
        {"comics of class 0", 20, many}, {"comics of class 1", 1, many}, {"comics of class 2", 1, many},
        {"comics of class 3", 1, many}, {"chapters sealed now", 1, many}, {"chapters out of the seal", 1, many},
        {"chapters not yet out", 1, many}, {"paid chapters", 21, many}, {"paid chapters at price 0", 1, many},
        {"sixty-page chapters", 1, 1}, {"chapters without a pass time", 1, many},
        {"chapters listed to the member", 101, many}, {"chapters refused to the member", 1, many},
        {"jpg pages", 1, many}, {"png pages", 1, many}, {"webp pages", 1, many}, {"spreads", 1, many},
        {"tall pages", 1, many}, {"pages with over 200 tucao", 1, many}, {"comic slides", 1, many}, {"link slides", 1, many}};
    for (const auto &[kind, least, most] : rows)
        QTest::newRow(kind) << QString::fromLatin1(kind) << least << most;
}

void TestSiteCatalogue::everyKindIsInTheDemo()
{
    QFETCH(QString, kind);
    QFETCH(int, least);
    QFETCH(int, most);
    QVERIFY2(!m_census.isEmpty(), "the walk ran first");
    const int found = m_census.value(kind);
    QVERIFY2(found >= least && found <= most, qPrintable(QString::number(found)));
}

void TestSiteCatalogue::tucaoFirstPageNewestFirst()
{
    const auto chapter = m_client->get(QStringLiteral("ios/pad/chapter_127.php"), {{"chapter_id", "40001"}, {"webp", "0"}});
    const QJsonObject first = chapter.json.value("data").toArray().first().toObject();
    const int total = first.value("total_tucao").toInt();
    QVERIFY(total > 200);
    const QString image = first.value("image_id").toString();
    // What the page loader asks: the first 200 below 100000000, newest first.
    const auto r = m_client->get(QStringLiteral("ios/pad/get_tucao.php"),
                                 {{"image_id", image}, {"last_id", "100000000"}, {"page_size", "200"}, {"type", "next_page"}});
    QCOMPARE(r.json.value("code").toInt(), 1);
    QCOMPARE(r.json.value("total").toInt(), total);
    const QJsonArray list = r.json.value("list").toArray();
    QCOMPARE(list.size(), 200);
    qint64 previous = 100000000;
    for (const QJsonValue &v : list) {
        QVERIFY_SHAPE(v.toObject(), kTucao);
        const qint64 id = v.toObject().value("tucao_id").toString().toLongLong();
        QVERIFY(id < previous);
        previous = id;
        QVERIFY(v.toObject().value("x").toInt() + v.toObject().value("width").toInt() <= first.value("width").toInt());
    }
}

void TestSiteCatalogue::imagesDecodeAtTheAnnouncedSize()
{
    QVERIFY(!m_pages.isEmpty());
    // One page of each format and shape, plus a cover, a slide and an avatar.
    QMap<QString, QJsonObject> samples;
    for (const QJsonObject &p : std::as_const(m_pages)) {
        const QString kind = p.value("location").toString().section('.', -1) + QString::number(p.value("width").toInt())
            + 'x' + QString::number(p.value("height").toInt());
        if (!samples.contains(kind))
            samples.insert(kind, p);
    }
    QVERIFY(samples.size() >= 4);
    for (const QJsonObject &p : std::as_const(samples)) {
        const auto r = m_client->getRaw(QUrl(p.value("location").toString()));
        QCOMPARE(r.status, 200);
        const QString ext = p.value("location").toString().section('.', -1);
        QCOMPARE(r.header("Content-Type"), ext == "jpg" ? QByteArray("image/jpeg") : "image/" + ext.toLatin1());
        const QImage image = QImage::fromData(r.body);
        QVERIFY2(!image.isNull(), qPrintable(p.value("location").toString()));
        QCOMPARE(image.width(), p.value("width").toInt());
        QCOMPARE(image.height(), p.value("height").toInt());
    }
    const QString cover = comic("10002").value("comic").toObject().value("cover").toString();
    QVERIFY(!QImage::fromData(m_client->getRaw(QUrl(cover)).body).isNull());
    QVERIFY(!QImage::fromData(m_client->getRaw(QUrl(m_base + "images/slide/1.jpg")).body).isNull());
    QVERIFY(!QImage::fromData(m_client->getRaw(QUrl(m_base + "images/face/100001.png")).body).isNull());
}

void TestSiteCatalogue::sameSeedSameCatalogue()
{
    // A second site with the same seed lists the same comics; another seed differs.
    auto titles = [](SiteTestClient &c) {
        QStringList out;
        for (const QJsonValue &v : c.get(QStringLiteral("ios/pad/list.php"), {{"page", "0"}, {"size", "100"}}).json.value("data").toArray())
            out << v.toObject().value("comic_id").toString() + v.toObject().value("name").toString();
        out.sort();
        return out;
    };
    auto titlesOfSeed = [&](quint32 seed) {
        QuorinSiteOptions o;
        o.seed = seed;
        QuorinSite site(o);
        site.listen();
        SiteTestClient c(site.baseUrl());
        return titles(c);
    };
    const QStringList mine = titles(*m_client);
    QCOMPARE(titlesOfSeed(1), mine);
    QVERIFY(titlesOfSeed(2) != mine);
}

QTEST_MAIN(TestSiteCatalogue)
#include "tst_sitecatalogue.moc"
