// quorin-site: the reference site on its own, for the demo run and manual tests.
#include "QuorinSite.h"
#include "QuorinSiteFaults.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    // Drawing text needs a QGuiApplication; the site never shows a window.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quorin-site"));
    qSetMessagePattern(QStringLiteral("%{time yyyy-MM-ddThh:mm:ss.zzz} %{if-warning}warning: %{endif}%{message}"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Quorin reference site: every web service of the client with a demo catalogue."));
    parser.addHelpOption();
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Port to listen on (0 picks one)."), QStringLiteral("N"),
                                  QStringLiteral("48042"));
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("Data directory (state and image cache)."),
                                  QStringLiteral("DIR"), QStringLiteral("site-data"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the demo catalogue."), QStringLiteral("S"),
                                  QStringLiteral("1"));
    const QCommandLineOption listen(QStringLiteral("listen"), QStringLiteral("Address to listen on."), QStringLiteral("ADDRESS"),
                                    QStringLiteral("127.0.0.1"));
    const QCommandLineOption latency(QStringLiteral("latency"), QStringLiteral("Added latency per request."), QStringLiteral("MS"));
    const QCommandLineOption stall(QStringLiteral("stall"), QStringLiteral("Never answer PATH (\"*\" = every path)."),
                                   QStringLiteral("PATH"));
    const QCommandLineOption error(QStringLiteral("error"), QStringLiteral("Answer PATH with an HTTP error status."),
                                   QStringLiteral("PATH=STATUS"));
    const QCommandLineOption malformed(QStringLiteral("malformed"), QStringLiteral("Answer PATH with a body that is not JSON."),
                                       QStringLiteral("PATH"));
    const QCommandLineOption drop(QStringLiteral("drop"), QStringLiteral("Close the connection mid-body on PATH."),
                                  QStringLiteral("PATH"));
    const QCommandLineOption gzip(QStringLiteral("gzip"), QStringLiteral("Gzip answers when the client accepts it."));
    const QCommandLineOption quiet(QStringLiteral("quiet"), QStringLiteral("No log line per request."));
    const QCommandLineOption longChapter(QStringLiteral("long-chapter-pages"),
                                         QStringLiteral("Pages of the first chapter of comic 10001 (default 60)."),
                                         QStringLiteral("N"), QStringLiteral("60"));
    parser.addOptions({port, data, seed, longChapter, listen, latency, stall, error, malformed, drop, gzip, quiet});
    parser.process(app);

    QTextStream err(stderr);
    bool ok = false;
    const uint portValue = parser.value(port).toUInt(&ok);
    if (!ok || portValue > 65535) {
        err << "quorin-site: --port wants a number from 0 to 65535\n";
        return 2;
    }
    const uint seedValue = parser.value(seed).toUInt(&ok);
    if (!ok) {
        err << "quorin-site: --seed wants a non-negative number\n";
        return 2;
    }
    QHostAddress address;
    if (!address.setAddress(parser.value(listen))) {
        err << "quorin-site: --listen wants an IP address\n";
        return 2;
    }

    QuorinSiteOptions options;
    options.dataDir = parser.value(data);
    options.seed = seedValue;
    options.longChapterPages = parser.value(longChapter).toInt(&ok);
    if (!ok || options.longChapterPages < 1 || options.longChapterPages > 2000) {
        err << "quorin-site: --long-chapter-pages wants a number from 1 to 2000\n";
        return 2;
    }
    options.logRequests = !parser.isSet(quiet);
    QuorinSite site(options);
    QuorinSiteFaults &faults = site.faults();
    if (parser.isSet(latency)) {
        const int ms = parser.value(latency).toInt(&ok);
        if (!ok || ms < 0) {
            err << "quorin-site: --latency wants milliseconds\n";
            return 2;
        }
        faults.setLatencyMs(ms);
    }
    for (const QString &p : parser.values(stall))
        faults.setStall(p);
    for (const QString &entry : parser.values(error)) {
        const int eq = entry.lastIndexOf(QLatin1Char('='));
        const int status = eq > 0 ? entry.mid(eq + 1).toInt(&ok) : 0;
        if (eq <= 0 || !ok || status < 100 || status > 599) {
            err << "quorin-site: --error wants PATH=STATUS, e.g. ios/pad/list.php=503\n";
            return 2;
        }
        faults.setErrorStatus(entry.left(eq), status,
                              QStringLiteral("{\"code\":0,\"message\":\"injected HTTP %1\"}").arg(status).toUtf8());
    }
    for (const QString &p : parser.values(malformed))
        faults.setMalformed(p, "<html>this is not JSON");
    for (const QString &p : parser.values(drop))
        faults.setDropMidBody(p);
    faults.setGzip(parser.isSet(gzip));

    const quint16 bound = site.listen(address, quint16(portValue));
    if (!bound) {
        err << "quorin-site: cannot listen on " << address.toString() << ':' << portValue << '\n';
        return 1;
    }
    QTextStream(stdout) << "quorin-site listening on " << site.baseUrl().toString() << " (data in " << options.dataDir
                        << ", seed " << seedValue << ")" << Qt::endl;
    return app.exec();
}
