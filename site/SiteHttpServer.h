#pragma once

#include "SiteHttpRequest.h"
#include "SiteHttpResponse.h"

#include <QElapsedTimer>
#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QPointer>

#include <functional>

class QTcpServer;
class QTcpSocket;
class QuorinSiteFaults;

// A small HTTP/1.1 server on QTcpServer: keep-alive, Content-Length bodies (no
// chunked requests), limits on header and body size, one request at a time per
// connection (pipelined requests wait in the buffer). The handler may answer
// later; the fault knobs are applied here, around the handler.
class SiteHttpServer : public QObject
{
    Q_OBJECT
public:
    using Responder = std::function<void(const SiteHttpResponse &)>;
    using Handler = std::function<void(const SiteHttpRequest &, const Responder &)>;
    using Recorder = std::function<void(const SiteHttpRequest &)>;

    static constexpr qsizetype kMaxHeaderBytes = 32 * 1024;
    static constexpr int kMaxHeaderCount = 100;
    static constexpr qsizetype kMaxBodyBytes = 8 * 1024 * 1024;

    SiteHttpServer(QuorinSiteFaults *faults, bool logRequests, QObject *parent = nullptr);
    ~SiteHttpServer() override;

    void setHandler(Handler handler) { m_handler = std::move(handler); }
    void setRecorder(Recorder recorder) { m_recorder = std::move(recorder); }
    quint16 listen(const QHostAddress &address, quint16 port);
    void close();

private:
    struct Connection
    {
        QByteArray buffer;
        bool busy = false;
        bool stalled = false;
        quint64 serial = 0;
    };

    void onNewConnection();
    void onReadyRead(QTcpSocket *socket);
    void processBuffer(QTcpSocket *socket);
    void dispatch(QTcpSocket *socket, const SiteHttpRequest &request, bool keepAlive);
    void send(QTcpSocket *socket, quint64 serial, const SiteHttpRequest &request, SiteHttpResponse response,
              bool keepAlive, const QElapsedTimer &timer);
    void refuseAndClose(QTcpSocket *socket, int status, const QByteArray &message);

    QuorinSiteFaults *m_faults;
    bool m_log;
    QTcpServer *m_server = nullptr;
    QHash<QTcpSocket *, Connection> m_connections;
    quint64 m_nextSerial = 1;
    Handler m_handler;
    Recorder m_recorder;
};
