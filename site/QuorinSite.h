#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QUrl>

class QThread;
class QuorinSiteFaults;
class SiteEngine;
class SiteRequestLog;

struct QuorinSiteOptions
{
    QString dataDir;          // SQLite state and the image cache (created when missing; empty: a
                              // private temporary directory removed with the site)
    quint32 seed = 1;         // the demo catalogue is a pure function of the seed
    bool logRequests = false; // one "quorin.site" info line per request
    int longChapterPages = 60; // pages of the first chapter of comic "10001" (the load-test chapter)
};

struct QuorinSiteRequestRecord
{
    QByteArray method;
    QString path;             // without the leading "/", e.g. "ios/pad/list.php"
    QByteArray query;         // the raw query, without "?"
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    bool valid = false;       // false when no request reached that path yet
};

// The reference site: every web service of the client, a deterministic demo
// catalogue, per-user state in SQLite and fault knobs, served over HTTP/1.1 on
// a thread of its own so that the thread that owns this object may block.
class QuorinSite : public QObject
{
    Q_OBJECT
public:
    explicit QuorinSite(const QuorinSiteOptions &options, QObject *parent = nullptr);
    ~QuorinSite() override; // stops the server thread cleanly

    // Returns the port listened on, 0 on failure. Port 0 picks a free port.
    quint16 listen(const QHostAddress &address = QHostAddress::LocalHost, quint16 port = 0);
    QUrl baseUrl() const; // "http://127.0.0.1:<port>/"
    QuorinSiteFaults &faults();
    QuorinSiteRequestRecord lastRequest(const QString &path) const;
    int requestCount(const QString &path) const;

private:
    QuorinSiteOptions m_options;
    QuorinSiteFaults *m_faults = nullptr;
    QThread *m_thread = nullptr;
    SiteEngine *m_engine = nullptr;
    SiteRequestLog *m_log = nullptr;
    quint16 m_port = 0;
    QHostAddress m_address;
};
