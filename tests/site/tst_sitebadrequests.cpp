// Bad requests get a well-formed refusal in the path's answer generation (".php":
// top-level "code" other than 1 and a "message"; "v3/app/": "code" 1 with
// "data"."stateCode" other than 1 and a "message"), never a crash or a bare 500.
#include "QuorinSite.h"
#include "SiteTestClient.h"

#include <QtTest>

#include <memory>

using Params = QList<QPair<QString, QString>>;
Q_DECLARE_METATYPE(Params)

class TestSiteBadRequests : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void refusedInTheRightForm_data();
    void refusedInTheRightForm();
    void unknownPathsAndImages_data();
    void unknownPathsAndImages();
    void siteStillServesAfterwards();

private:
    std::unique_ptr<QuorinSite> m_site;
    QString m_key;
};

void TestSiteBadRequests::initTestCase()
{
    m_site = std::make_unique<QuorinSite>(QuorinSiteOptions()); // on a private temporary directory
    QVERIFY(m_site->listen());
    SiteTestClient client(m_site->baseUrl());
    QVERIFY(!client.signIn("reader", "reader123").isEmpty());
    m_key = client.key();
}

void TestSiteBadRequests::refusedInTheRightForm_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<bool>("post");
    QTest::addColumn<Params>("params");

    const QString tooLong(200, QLatin1Char('9'));
    // Accounts (a wrong password: tst_accountflows, through the sign-in form).
    QTest::newRow("login without password") << "ios/pad/login.php" << false << false << Params{{"username", "reader"}};
    QTest::newRow("login demo author account") << "ios/pad/login.php" << false << false << Params{{"username", "demo1"}, {"password", ""}};
    QTest::newRow("autologin without key") << "v3/app/ios/pad/member/autologin" << false << false << Params{{"v", "3.5.0"}, {"from", "appstore4"}};
    QTest::newRow("autologin wrong key") << "v3/app/ios/pad/member/autologin" << false << false << Params{{"key", "0123456789abcdef"}, {"v", "3.5.0"}};
    QTest::newRow("autologin hostile key") << "v3/app/ios/pad/member/autologin" << false << false << Params{{"key", "' OR 1=1 --"}};
    QTest::newRow("text code bad mobile") << "v3/app/ios/pad/member/getmessage" << false << false << Params{{"mobile", "12345"}};
    QTest::newRow("mobile reg no code") << "v3/app/ios/pad/member/mobilereg" << false << false << Params{{"mobile", "13900000000"}, {"password", "secret99"}};
    QTest::newRow("reg short password") << "v3/app/ios/pad/member/reg" << false << false << Params{{"username", "someone"}, {"password", "123"}};
    QTest::newRow("reg taken name") << "v3/app/ios/pad/member/reg" << false << false << Params{{"username", "reader"}, {"password", "secret99"}};
    QTest::newRow("open login no token") << "v3/app/ios/pad/member/openLogin" << false << false << Params{{"open_id", "x"}, {"site_mark", "weibo"}};
    QTest::newRow("qq login no open id") << "ios/pad/login_qq.php" << false << false << Params{{"access_token", "t"}};
    QTest::newRow("passport no session") << "v3/app/ios/pad/member/hrwlogin" << false << false << Params{};
    QTest::newRow("version without target") << "v3/app/ios/pad/version/newVersion" << false << false << Params{};
    QTest::newRow("token not hex") << "ios/pad/token.php" << false << false << Params{{"token", "<xml>"}, {"user_id", "100001"}};
    QTest::newRow("token unknown user") << "ios/pad/token.php" << false << false << Params{{"token", "abcdef0123"}, {"user_id", "5"}};
    // Browsing.
    QTest::newRow("list page not numeric") << "ios/pad/list.php" << false << false << Params{{"page", "abc"}};
    QTest::newRow("list size zero") << "ios/pad/list.php" << false << false << Params{{"size", "0"}};
    QTest::newRow("list unknown theme") << "ios/pad/list.php" << false << false << Params{{"argname", "theme"}, {"argval", "99"}};
    QTest::newRow("list unknown argname") << "ios/pad/list.php" << false << false << Params{{"argname", "colour"}, {"argval", "1"}};
    QTest::newRow("search empty") << "ios/pad/search.php" << false << false << Params{{"q", "   "}, {"page", "1"}};
    QTest::newRow("search page zero") << "ios/pad/search.php" << false << false << Params{{"q", "星"}, {"page", "0"}};
    QTest::newRow("hot keywords num text") << "ios/pad/hot_keywords.php" << false << false << Params{{"num", "ten"}};
    QTest::newRow("comic missing id") << "ios/pad/comic_127.php" << false << false << Params{};
    QTest::newRow("comic id not numeric") << "ios/pad/comic_127.php" << false << false << Params{{"comic_id", "10001;DROP TABLE users"}};
    QTest::newRow("comic unknown id") << "ios/pad/comic_127.php" << false << false << Params{{"comic_id", "99999999"}};
    QTest::newRow("comic id too long") << "ios/pad/comic_127.php" << false << false << Params{{"comic_id", tooLong}};
    QTest::newRow("check update bad record") << "ios/pad/check_update.php" << false << true << Params{{"post_data", "10001|abc||"}};
    QTest::newRow("check update missing") << "ios/pad/check_update.php" << false << true << Params{};
    QTest::newRow("fav signed out") << "ios/pad/fav.php" << false << true << Params{{"data", SiteTestClient::b64("10001|add|0||")}};
    QTest::newRow("fav bad base64") << "ios/pad/fav.php" << true << true << Params{{"data", "!!!not base64***"}};
    QTest::newRow("fav record without time") << "ios/pad/fav.php" << true << true << Params{{"data", SiteTestClient::b64("10001|add||")}};
    QTest::newRow("fav unknown action") << "ios/pad/fav.php" << true << true << Params{{"data", SiteTestClient::b64("10001|eat|0||")}};
    // Reading and purchases.
    QTest::newRow("chapter zero") << "ios/pad/chapter_127.php" << false << false << Params{{"chapter_id", "0"}};
    QTest::newRow("chapter webp 2") << "ios/pad/chapter_127.php" << false << false << Params{{"chapter_id", "40001"}, {"webp", "2"}};
    QTest::newRow("read log signed out") << "ios/pad/image_log.php" << false << true << Params{{"image_ids", SiteTestClient::b64("{}")}};
    QTest::newRow("read log bad base64") << "ios/pad/image_log.php" << true << true << Params{{"image_ids", "%%%"}};
    QTest::newRow("read log json array") << "ios/pad/image_log.php" << true << true << Params{{"image_ids", SiteTestClient::b64("[1,2]")}};
    QTest::newRow("buy signed out") << "v3/app/ios/pad/buyChapter/buy" << false << false << Params{{"comicId", "10002"}, {"chapter", "[\"40050\"]"}};
    QTest::newRow("buy truncated json") << "v3/app/ios/pad/buyChapter/buy" << true << false << Params{{"comicId", "10002"}, {"chapter", "[\"400"}};
    QTest::newRow("buy chapter of another comic") << "v3/app/ios/pad/buyChapter/buy" << true << false << Params{{"comicId", "10002"}, {"chapter", "[\"40001\"]"}};
    QTest::newRow("buy free chapter") << "v3/app/ios/pad/buyChapter/buy" << true << false << Params{{"comicId", "10001"}, {"chapter", "[\"40001\"]"}};
    QTest::newRow("buy nested array") << "v3/app/ios/pad/buyChapter/buy" << true << false << Params{{"comicId", "10002"}, {"chapter", "[[1]]"}};
    QTest::newRow("old buy unknown comic") << "ios/pad/buy_chapter.php" << true << true << Params{{"comic_id", "1"}, {"chapter", "[\"40001\"]"}};
    // Tucao.
    QTest::newRow("tucao list missing image") << "ios/pad/get_tucao.php" << false << false << Params{{"page_size", "20"}};
    QTest::newRow("tucao list unknown image") << "ios/pad/get_tucao.php" << false << false << Params{{"image_id", "1"}};
    QTest::newRow("tucao list page size 0") << "ios/pad/get_tucao.php" << false << false << Params{{"image_id", "800001"}, {"page_size", "0"}};
    QTest::newRow("tucao list bad type") << "ios/pad/get_tucao.php" << false << false << Params{{"image_id", "800001"}, {"type", "sideways"}};
    QTest::newRow("tucao list bad last id") << "ios/pad/get_tucao.php" << false << false << Params{{"image_id", "800001"}, {"last_id", "1e9"}};
    QTest::newRow("tucao add signed out") << "ios/pad/add_tucao.php" << false << true << Params{{"image_id", "800001"}, {"content", "x"}, {"x", "1"}, {"y", "1"}, {"w", "10"}, {"h", "10"}};
    QTest::newRow("tucao add empty") << "ios/pad/add_tucao.php" << true << true << Params{{"image_id", "800001"}, {"content", "  "}, {"x", "1"}, {"y", "1"}, {"w", "10"}, {"h", "10"}};
    QTest::newRow("tucao add too long") << "ios/pad/add_tucao.php" << true << true << Params{{"image_id", "800001"}, {"content", QString(141, QChar(0x5410))}, {"x", "1"}, {"y", "1"}, {"w", "10"}, {"h", "10"}};
    QTest::newRow("tucao add outside page") << "ios/pad/add_tucao.php" << true << true << Params{{"image_id", "800001"}, {"content", "x"}, {"x", "5000"}, {"y", "1"}, {"w", "10"}, {"h", "10"}};
    QTest::newRow("tucao add x text") << "ios/pad/add_tucao.php" << true << true << Params{{"image_id", "800001"}, {"content", "x"}, {"x", "left"}, {"y", "1"}, {"w", "10"}, {"h", "10"}};
    QTest::newRow("tucao edit unknown") << "ios/pad/edit_tucao.php" << true << false << Params{{"tucao_id", "99999999"}, {"x", "1"}, {"y", "1"}, {"width", "10"}, {"height", "10"}};
    QTest::newRow("tucao edit someone else's") << "ios/pad/edit_tucao.php" << true << false << Params{{"tucao_id", "1"}, {"x", "1"}, {"y", "1"}, {"width", "10"}, {"height", "10"}};
    QTest::newRow("tucao delete not numeric") << "ios/pad/delete_tucao.php" << true << false << Params{{"tucao_id", "abc"}, {"comic_id", "10001"}};
    QTest::newRow("tucao delete someone else's") << "ios/pad/delete_tucao.php" << true << false << Params{{"tucao_id", "1"}, {"comic_id", "10001"}};
    // Community.
    QTest::newRow("comments thread text") << "ios/pad/comment_list.php" << false << false << Params{{"thread_id", "abc"}, {"page", "1"}};
    QTest::newRow("comments unknown thread") << "ios/pad/comment_list.php" << false << false << Params{{"thread_id", "77"}, {"page", "1"}};
    QTest::newRow("replies comment text") << "v3/app/ios/pad/comment/replylist" << false << false << Params{{"comment_id", "abc"}, {"page", "1"}};
    QTest::newRow("replies unknown comment") << "v3/app/ios/pad/comment/replylist" << false << false << Params{{"comment_id", "99999999"}, {"page", "1"}};
    QTest::newRow("comment signed out") << "ios/pad/comment_add.php" << false << true << Params{{"thread_id", "510001"}, {"content", "hi"}};
    QTest::newRow("comment empty") << "ios/pad/comment_add.php" << true << true << Params{{"thread_id", "510001"}, {"content", ""}};
    QTest::newRow("reply unknown comment") << "ios/pad/comment_reply.php" << true << true << Params{{"comment_id", "99999999"}, {"thread_id", "510001"}, {"content", "hi"}};
    QTest::newRow("grade bad act") << "ios/pad/grade.php" << true << false << Params{{"act", "delete"}, {"comic_id", "10001"}};
    QTest::newRow("grade six stars") << "ios/pad/grade.php" << true << false << Params{{"act", "add"}, {"comic_id", "10001"}, {"grade", "6"}};
    QTest::newRow("grade signed out") << "ios/pad/grade.php" << false << false << Params{{"act", "add"}, {"comic_id", "10001"}, {"grade", "3"}};
    QTest::newRow("ticket signed out") << "ios/pad/ticket.php" << false << true << Params{{"act", "get"}, {"comic_id", "10001"}};
    QTest::newRow("ticket four") << "ios/pad/ticket.php" << true << true << Params{{"act", "cast"}, {"comic_id", "10001"}, {"ticket_num", "4"}};
    // Payment.
    QTest::newRow("order unknown product") << "v3/app/ios/pad/pay/alipay" << true << false << Params{{"product", "gold"}, {"product_num", "1"}, {"rmb", "1"}};
    QTest::newRow("order status foreign") << "v3/app/ios/pad/pay/alipayStatus" << true << false << Params{{"order_id", "Q1"}};
    QTest::newRow("pay host signed out") << "api/index.php" << false << true << Params{{"product", "coin"}, {"product_num", "1"}, {"total_money", "1"}};
    QTest::newRow("pay ajax unknown") << "pay/ajax.php" << false << false << Params{{"mod", "x"}, {"act", "y"}};
    QTest::newRow("partner order bad num") << "harrowpay/vip_member_coin_req.php" << true << true << Params{{"product_id", "2"}, {"product_num", "99"}, {"total_money", "1"}};
    QTest::newRow("coin log signed out") << "ios/pad/coin_log.php" << false << false << Params{{"page", "1"}};
    QTest::newRow("ticket log bad page") << "android/phone/ticket_log.php" << true << false << Params{{"page", "x"}};
}

void TestSiteBadRequests::refusedInTheRightForm()
{
    QFETCH(QString, path);
    QFETCH(bool, signedIn);
    QFETCH(bool, post);
    QFETCH(Params, params);
    SiteTestClient client(m_site->baseUrl());
    if (signedIn)
        client.setKey(m_key);
    const auto r = post ? client.post(path, params) : client.get(path, params);
    QCOMPARE(r.status, 200);
    QVERIFY2(r.isObject, r.body.constData());
    if (path.startsWith(QLatin1String("v3/app/"))) {
        QCOMPARE(r.json.value("code").toInt(), 1);
        const QJsonObject data = SiteTestClient::v3Data(r);
        QVERIFY2(data.value("stateCode").isDouble() && data.value("stateCode").toInt() != 1, r.body.constData());
        QVERIFY(!data.value("message").toString().isEmpty());
        QVERIFY(!data.contains("returnData"));
    } else {
        QVERIFY2(r.json.value("code").isDouble() && r.json.value("code").toInt() != 1, r.body.constData());
        QVERIFY(!r.json.value("message").toString().isEmpty());
    }
}

void TestSiteBadRequests::unknownPathsAndImages_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("unknown php") << "ios/pad/nothing.php";
    QTest::newRow("unknown v3") << "v3/app/ios/pad/nothing";
    QTest::newRow("dot dot") << "ios/pad/../../etc/passwd";
    QTest::newRow("page unknown") << "images/page/1.jpg";
    QTest::newRow("page wrong format") << "images/page/800001.png";
    QTest::newRow("cover unknown") << "images/cover/5.jpg";
    QTest::newRow("slide zero") << "images/slide/0.jpg";
    QTest::newRow("image id too long") << "images/page/8000010000000000000000.jpg";
    QTest::newRow("image traversal") << "images/page/..%2F..%2Fquorin-site-s1.sqlite";
}

void TestSiteBadRequests::unknownPathsAndImages()
{
    QFETCH(QString, path);
    SiteTestClient client(m_site->baseUrl());
    const auto r = client.getRaw(QUrl(m_site->baseUrl().toString() + path));
    QCOMPARE(r.status, 404);
    QVERIFY(r.isObject);
    if (path.startsWith(QLatin1String("v3/app/")))
        QCOMPARE(SiteTestClient::v3Data(r).value("stateCode").toInt(), 0);
    else
        QCOMPARE(r.json.value("code").toInt(), 0);
}

void TestSiteBadRequests::siteStillServesAfterwards()
{
    SiteTestClient client(m_site->baseUrl());
    QCOMPARE(client.get(QStringLiteral("ios/pad/comic_127.php"), {{"comic_id", "10001"}}).json.value("code").toInt(), 1);
    QCOMPARE(client.signIn("reader", "reader123").value("coin").toInt(), 100); // nothing was charged on the way
}

QTEST_MAIN(TestSiteBadRequests)
#include "tst_sitebadrequests.moc"
