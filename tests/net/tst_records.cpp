// Records and wire codes that need no server.

#include "net/VORAComicInfoDTO.h"
#include "net/VORACommentInfoDTO.h"
#include "net/VORAPageInfoDTO.h"
#include "net/VORAQ42IpadWebServiceUtility.h"
#include "net/VORARecommentDTO.h"
#include "net/VORASlideComicDTO.h"
#include "net/VORATucao.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace {

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

class TestRecords : public QObject
{
    Q_OBJECT
private slots:
    void filterCodes_data();
    void filterCodes();
    void fieldDecoders_data();
    void fieldDecoders();
    void chapterPassTimeIsTheLaterOfBoth_data();
    void chapterPassTimeIsTheLaterOfBoth();
    void archivesRoundTrip();
    void commentsFillGuestNamesAndLevels();
    void tucaoListNeedsAnObject();
};

void TestRecords::filterCodes_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("code");

    const QList<QPair<qint64, const char *>> themes{{1, "1"}, {2, "2"}, {4, "3"}, {8, "4"}, {16, "5"}, {32, "6"},
                                                   {64, "7"}, {128, "9"}, {256, "11"}, {512, "12"}, {513, "8"},
                                                   {0, ""}, {3, ""}, {1024, ""}, {-1, ""}};
    for (const auto &t : themes)
        QTest::addRow("theme %lld", t.first) << "theme" << t.first << QString::fromLatin1(t.second);
    const QList<QPair<qint64, const char *>> sorts{{0, "0"}, {1, "1"}, {2, "20"}, {3, "4"}, {4, "5"},
                                                  {5, "7"}, {6, "9"}, {7, "23"}, {8, ""}, {-1, ""}};
    for (const auto &s : sorts)
        QTest::addRow("sort %lld", s.first) << "sort" << s.first << QString::fromLatin1(s.second);
    QTest::newRow("serial 0") << "serial" << qint64(0) << "0";
    QTest::newRow("serial 1") << "serial" << qint64(1) << "1";
    QTest::newRow("serial 2") << "serial" << qint64(2) << "";
    QTest::newRow("type 1") << "type" << qint64(1) << "1";
    QTest::newRow("type 8") << "type" << qint64(8) << "4";
    QTest::newRow("type 3") << "type" << qint64(3) << "";
}

void TestRecords::filterCodes()
{
    QFETCH(QString, table);
    QFETCH(qint64, value);
    QFETCH(QString, code);
    QString actual;
    if (table == QLatin1String("theme"))
        actual = VORAQ42IpadWebServiceUtility::parameterWithComicTheme(value);
    else if (table == QLatin1String("sort"))
        actual = VORAQ42IpadWebServiceUtility::parameterWithComicSort(value);
    else if (table == QLatin1String("serial"))
        actual = VORAQ42IpadWebServiceUtility::parameterWithComicSerial(value);
    else
        actual = VORAQ42IpadWebServiceUtility::parameterWithComicType(value);
    QCOMPARE(actual, code);
}

void TestRecords::fieldDecoders_data()
{
    QTest::addColumn<QByteArray>("json"); // {"v": ...}
    QTest::addColumn<int>("accredit");
    QTest::addColumn<int>("slideType");
    QTest::addColumn<int>("serial");
    QTest::addColumn<QString>("clickTotal");

    QTest::newRow("\"0\"") << QByteArray("\"0\"") << 0 << 0 << 0 << "0";
    QTest::newRow("\"1\"") << QByteArray("\"1\"") << 1 << 1 << 1 << "1";
    QTest::newRow("\"2\"") << QByteArray("\"2\"") << 2 << 1 << 0 << "2";
    QTest::newRow("\"3\"") << QByteArray("\"3\"") << 0 << 1 << 0 << "3";
    QTest::newRow("number 1") << QByteArray("1") << 0 << 1 << 0 << "1";
    QTest::newRow("number 0") << QByteArray("0") << 0 << 1 << 0 << "0";
    QTest::newRow("null") << QByteArray("null") << 0 << 1 << 0 << "";
    QTest::newRow("text") << QByteArray("\"abc\"") << 0 << 1 << 0 << "";
    QTest::newRow("big number") << QByteArray("12345678901") << 0 << 1 << 0 << "12345678901";
    QTest::newRow("fraction") << QByteArray("1234.6") << 0 << 1 << 0 << "1235";
    QTest::newRow("object") << QByteArray("{}") << 0 << 1 << 0 << "";
}

void TestRecords::fieldDecoders()
{
    QFETCH(QByteArray, json);
    QFETCH(int, accredit);
    QFETCH(int, slideType);
    QFETCH(int, serial);
    QFETCH(QString, clickTotal);
    const QJsonValue v = QJsonDocument::fromJson("{\"v\":" + json + "}").object().value(QLatin1String("v"));
    QCOMPARE(VORAQ42IpadWebServiceUtility::comicAccreditWithString(v), accredit);
    QCOMPARE(VORAQ42IpadWebServiceUtility::SlideTypeWithString(v), slideType);
    QCOMPARE(VORAQ42IpadWebServiceUtility::comicSerialWithString(v), serial);
    QCOMPARE(VORAQ42IpadWebServiceUtility::formatClickTotal(v), clickTotal);
    // Missing altogether.
    QCOMPARE(VORAQ42IpadWebServiceUtility::formatClickTotal(QJsonValue(QJsonValue::Undefined)), QString());
}

void TestRecords::chapterPassTimeIsTheLaterOfBoth_data()
{
    QTest::addColumn<QByteArray>("chapter");
    QTest::addColumn<qint64>("passTime");
    QTest::newRow("pass later") << QByteArray("{\"release_time\":100,\"pass_time\":200}") << qint64(200);
    QTest::newRow("release later") << QByteArray("{\"release_time\":300,\"pass_time\":200}") << qint64(300);
    QTest::newRow("null pass counts as 0") << QByteArray("{\"release_time\":100,\"pass_time\":null}") << qint64(100);
    QTest::newRow("texts") << QByteArray("{\"release_time\":\"100\",\"pass_time\":\"250\"}") << qint64(250);
    QTest::newRow("nothing") << QByteArray("{}") << qint64(0);
}

void TestRecords::chapterPassTimeIsTheLaterOfBoth()
{
    QFETCH(QByteArray, chapter);
    QFETCH(qint64, passTime);
    const auto dto = VORAChapterInfoDTO::fromJson(QJsonDocument::fromJson(chapter).object(), QStringLiteral("7"), 3);
    QCOMPARE(dto.pass_time.toSecsSinceEpoch(), passTime);
    QCOMPARE(dto.pass_time.timeSpec(), Qt::UTC);
}

void TestRecords::archivesRoundTrip()
{
    const VORAComicInfoDTO comic = VORAComicInfoDTO::parseData(
        object("{\"comic\":{\"name\":\"名\",\"author_name\":\"a\",\"cover\":\"http://c\",\"series_status\":1,"
               "\"read_order\":5,\"is_vip\":3,\"click_total\":9000000000,\"last_update_time\":1400000000,"
               "\"thread\":{\"thread_id\":\"77\",\"name\":\"t\"}},"
               "\"chapter_list\":[{\"chapter_id\":\"1\",\"name\":\"c1\",\"type\":2,\"buyed\":-1,\"price\":5,"
               "\"release_time\":1300000000,\"size\":2048,\"image_total\":20,\"is_view\":1}],"
               "\"top4\":[{\"comic_id\":\"2\",\"chapter_id\":\"3\",\"location\":\"http://t\"}]}"),
        QStringLiteral("42"));
    QCOMPARE(comic.serialStatus, 1);
    QCOMPARE(comic.readOrder, 0); // only 0 or 1 are taken
    QCOMPARE(comic.clickTotal, Q_INT64_C(9000000000));
    QCOMPARE(comic.thread_id, QStringLiteral("77"));
    QCOMPARE(comic.chapterList.size(), 1);
    QCOMPARE(comic.chapterList.first().buyed, -1);
    QCOMPARE(comic.topList.first().urlLocation, QStringLiteral("http://t"));
    QCOMPARE(VORAComicInfoDTO::fromArchive(comic.toArchive()), comic);
    // Through CBOR bytes, as an archive file holds it.
    const QCborValue reread = QCborValue::fromCbor(QCborValue(comic.toArchive()).toCbor());
    QCOMPARE(VORAComicInfoDTO::fromArchive(reread.toMap()), comic);

    const auto pages = VORAPageInfoDTO::parseChapterData(
        object("{\"data\":[{\"image_id\":\"9\",\"location\":\"http://p\",\"width\":800,\"height\":1200,\"total_tucao\":3}]}"));
    QCOMPARE(pages.size(), 1);
    const QCborMap pageArchive = pages.first().toArchive();
    QCOMPARE(pageArchive.keys().size(), 6);
    for (const char *key : {"pageId", "url", "width", "height", "tucaoTotal", "index"})
        QVERIFY2(pageArchive.contains(QLatin1String(key)), key);
    QCOMPARE(VORAPageInfoDTO::fromArchive(pageArchive), pages.first());
    // Wrong types: a number is no id, text is a number, sizes are read as 32 bits.
    const auto odd = VORAPageInfoDTO::parseChapterData(
        object("{\"data\":[{\"image_id\":889,\"width\":\"800\",\"height\":4294967297},{\"image_id\":\"890\"}]}"));
    QCOMPARE(QStringList({odd.at(0).pageId, QString::number(odd.at(0).width), QString::number(odd.at(0).height),
                          QString::number(odd.at(1).index)}),
             QStringList({QString(), "800", "1", "1"}));

    const VORARecommentDTO rec = VORARecommentDTO::fromJson(
        object("{\"comic_id\":\"5\",\"name\":\"n\",\"accredit\":\"1\",\"click_total\":12,\"last_update_time\":5}"));
    QCOMPARE(VORARecommentDTO::fromArchive(rec.toArchive()), rec);
    const VORASlideComicDTO slide = VORASlideComicDTO::fromJson(object("{\"comic_id\":\"5\",\"type\":\"1\",\"sort\":4}"));
    QCOMPARE(VORASlideComicDTO::fromArchive(slide.toArchive()), slide);

    // A damaged archive gives empty fields, never a crash.
    QCOMPARE(VORAComicInfoDTO::fromArchive(QCborMap{{QStringLiteral("chapterList"), 5}}).chapterList.size(), 0);
}

void TestRecords::commentsFillGuestNamesAndLevels()
{
    const auto page = VORACommentInfoDTO::parseData(object(
        "{\"thread_id\":\"1\",\"object_id\":\"2\",\"total_comment\":\"3\",\"pages\":{\"total_page\":4},"
        "\"data\":[{\"comment_id\":\"c\",\"nickname\":\"\",\"level\":{\"level\":6},\"create_time\":10,"
        "\"reply\":[{\"nickname\":null,\"content_filter\":\"r\",\"level\":3}]},"
        "{\"nickname\":\"amy\",\"reply\":\"x\"}]}"));
    QCOMPARE(page.commentTotal, 3);
    QCOMPARE(page.commentTotal_page, 4);
    QCOMPARE(page.commentData.size(), 2);
    QCOMPARE(page.commentData.at(0).commentNickname, QStringLiteral("游客"));
    QCOMPARE(page.commentData.at(0).commentLevel, 6);
    QCOMPARE(page.commentData.at(0).commentReply.size(), 1);
    QCOMPARE(page.commentData.at(0).commentReply.first().replyNickname, QStringLiteral("游客"));
    QCOMPARE(page.commentData.at(0).commentReply.first().replyLevel, 0); // not an object
    QCOMPARE(page.commentData.at(1).commentNickname, QStringLiteral("amy"));
    QVERIFY(page.commentData.at(1).commentReply.isEmpty());
}

void TestRecords::tucaoListNeedsAnObject()
{
    QVERIFY(VORATucao::listFromJson(QJsonArray{1, 2}).isEmpty());
    QVERIFY(VORATucao::listFromJson(object("{\"list\":{}}")).isEmpty());
    const auto list = VORATucao::listFromJson(object(
        "{\"list\":[{\"tucao_id\":5,\"content\":\"c\",\"x\":4294967297,\"ceate_time\":100,\"create_time\":200}]}"));
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.first().tucaoId, QString()); // a number is no identifier
    QCOMPARE(list.first().content, QStringLiteral("c"));
    QCOMPARE(list.first().x, 1);               // read as 32 bits
    QCOMPARE(list.first().updateTime.toSecsSinceEpoch(), 100);
}

QTEST_GUILESS_MAIN(TestRecords)
#include "tst_records.moc"
