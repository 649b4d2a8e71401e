// Loopback load figure for the reference site: requests per second for one page
// image (6 concurrent requests, as many as QNetworkAccessManager opens per host),
// against python3 -m http.server serving the same bytes. Prints one JSON line.
#include "QuorinSite.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <QTimer>

namespace {
QByteArray fetch(QNetworkAccessManager &nam, const QUrl &url, int *status = nullptr)
{
    QNetworkReply *reply = nam.get(QNetworkRequest(url));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    if (status)
        *status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->error() == QNetworkReply::NoError ? reply->readAll() : QByteArray();
    reply->deleteLater();
    return body;
}

struct Figure
{
    double rps = 0;
    int errors = 0;
};

// Keeps `parallel` requests in flight for `seconds`, counts whole answers.
Figure measure(const QUrl &url, qsizetype expectedBytes, double seconds, int parallel = 6)
{
    QNetworkAccessManager nam;
    QElapsedTimer timer;
    int done = 0, errors = 0, inFlight = 0;
    bool stopping = false;
    QEventLoop loop;
    std::function<void()> launch = [&] {
        ++inFlight;
        QNetworkReply *reply = nam.get(QNetworkRequest(url));
        QObject::connect(reply, &QNetworkReply::finished, [&, reply] {
            --inFlight;
            if (reply->error() == QNetworkReply::NoError && reply->readAll().size() == expectedBytes)
                ++done;
            else
                ++errors;
            reply->deleteLater();
            if (!stopping && timer.elapsed() < seconds * 1000)
                launch();
            else if (inFlight == 0)
                loop.quit();
        });
    };
    timer.start();
    for (int i = 0; i < parallel; ++i)
        launch();
    loop.exec();
    stopping = true;
    return Figure{done / (timer.elapsed() / 1000.0), errors};
}

quint16 freePort()
{
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    return s.serverPort();
}
}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const double seconds = argc > 1 ? qMax(0.5, QByteArray(argv[1]).toDouble()) : 3.0;
    QTextStream err(stderr);

    QTemporaryDir data;
    QuorinSiteOptions options;
    options.dataDir = data.path();
    QuorinSite site(options);
    if (!site.listen()) {
        err << "cannot start the site\n";
        return 1;
    }
    QNetworkAccessManager nam;
    const QJsonObject chapter = QJsonDocument::fromJson(fetch(nam, site.baseUrl().resolved(QUrl("ios/pad/chapter_127.php?chapter_id=40001")))).object();
    const QUrl pageUrl(chapter.value("data").toArray().first().toObject().value("location").toString());
    const QByteArray image = fetch(nam, pageUrl); // drawn once here, served from memory afterwards
    if (image.isEmpty()) {
        err << "no page image\n";
        return 1;
    }

    QTemporaryDir staticDir;
    QFile file(QDir(staticDir.path()).filePath("page.jpg"));
    file.open(QIODevice::WriteOnly);
    file.write(image);
    file.close();
    const quint16 port = freePort();
    QProcess python;
    python.setWorkingDirectory(staticDir.path());
    python.setStandardErrorFile(QProcess::nullDevice()); // one log line per request otherwise
    python.start("python3", {"-m", "http.server", QString::number(port), "--bind", "127.0.0.1"});
    const QUrl staticUrl(QStringLiteral("http://127.0.0.1:%1/page.jpg").arg(port));
    bool up = false;
    for (int i = 0; i < 100 && !up; ++i) {
        int status = 0;
        up = fetch(nam, staticUrl, &status).size() == image.size() && status == 200;
        if (!up)
            QThread::msleep(50);
    }
    if (!up) {
        err << "python3 -m http.server did not come up\n";
        return 1;
    }

    const Figure siteFigure = measure(pageUrl, image.size(), seconds);
    const Figure peerFigure = measure(staticUrl, image.size(), seconds);
    python.terminate();
    python.waitForFinished(3000);

    const QJsonObject line{
        {"bench", "site_page_image"},
        {"bytes", qint64(image.size())},
        {"seconds", seconds},
        {"site_rps", qRound(siteFigure.rps * 10) / 10.0},
        {"site_errors", siteFigure.errors},
        {"peer", "python3 -m http.server"},
        {"peer_rps", qRound(peerFigure.rps * 10) / 10.0},
        {"peer_errors", peerFigure.errors},
        {"ratio", peerFigure.rps > 0 ? qRound(siteFigure.rps / peerFigure.rps * 100) / 100.0 : 0.0},
    };
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
    return 0;
}
