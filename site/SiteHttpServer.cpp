#include "SiteHttpServer.h"

#include "QuorinSiteFaults.h"
#include "SiteGzip.h"
#include "SiteLog.h"

#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

SiteHttpServer::SiteHttpServer(QuorinSiteFaults *faults, bool logRequests, QObject *parent)
    : QObject(parent), m_faults(faults), m_log(logRequests)
{
}

SiteHttpServer::~SiteHttpServer()
{
    close();
}

quint16 SiteHttpServer::listen(const QHostAddress &address, quint16 port)
{
    if (!m_server) {
        m_server = new QTcpServer(this);
        connect(m_server, &QTcpServer::newConnection, this, &SiteHttpServer::onNewConnection);
    }
    if (m_server->isListening())
        m_server->close();
    if (!m_server->listen(address, port)) {
        qCWarning(lcSite) << "cannot listen on" << address.toString() << port << ":" << m_server->errorString();
        return 0;
    }
    return m_server->serverPort();
}

void SiteHttpServer::close()
{
    if (m_server)
        m_server->close();
    const QList<QTcpSocket *> sockets = m_connections.keys();
    m_connections.clear();
    for (QTcpSocket *socket : sockets) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
}

void SiteHttpServer::onNewConnection()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        Connection c;
        c.serial = m_nextSerial++;
        m_connections.insert(socket, c);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_connections.remove(socket);
            socket->deleteLater();
        });
    }
}

void SiteHttpServer::onReadyRead(QTcpSocket *socket)
{
    auto it = m_connections.find(socket);
    if (it == m_connections.end())
        return;
    const QByteArray data = socket->readAll();
    if (it->stalled)
        return; // a stalled connection swallows everything until the peer gives up
    it->buffer.append(data);
    if (it->buffer.size() > kMaxHeaderBytes + kMaxBodyBytes) {
        refuseAndClose(socket, 413, "too much data");
        return;
    }
    processBuffer(socket);
}

void SiteHttpServer::refuseAndClose(QTcpSocket *socket, int status, const QByteArray &message)
{
    const QByteArray body = "{\"code\":0,\"message\":\"" + message + "\"}";
    QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + ' ' + SiteHttpResponse::reasonPhrase(status)
        + "\r\nContent-Type: application/json; charset=utf-8\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n";
    socket->write(head + body);
    m_connections.remove(socket);
    socket->disconnectFromHost();
    if (m_log)
        qCInfo(lcSite).noquote() << "-" << "-" << status << body.size() << "0ms" << message;
}

void SiteHttpServer::processBuffer(QTcpSocket *socket)
{
    auto it = m_connections.find(socket);
    if (it == m_connections.end() || it->busy || it->stalled)
        return;
    QByteArray &buf = it->buffer;
    // Tolerate empty lines between requests.
    while (buf.startsWith("\r\n"))
        buf.remove(0, 2);
    const qsizetype headerEnd = buf.indexOf("\r\n\r\n");
    if (headerEnd < 0) {
        if (buf.size() > kMaxHeaderBytes)
            refuseAndClose(socket, 431, "request header too large");
        return;
    }
    if (headerEnd > kMaxHeaderBytes) {
        refuseAndClose(socket, 431, "request header too large");
        return;
    }
    const QList<QByteArray> lines = buf.left(headerEnd).split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    if (requestLine.size() != 3 || !requestLine.at(2).startsWith("HTTP/1.")) {
        refuseAndClose(socket, 400, "bad request line");
        return;
    }
    SiteHttpRequest request;
    request.method = requestLine.at(0).toUpper();
    const QByteArray target = requestLine.at(1);
    const bool http10 = requestLine.at(2) == "HTTP/1.0";
    if (lines.size() - 1 > kMaxHeaderCount) {
        refuseAndClose(socket, 431, "too many header fields");
        return;
    }
    qint64 contentLength = 0;
    bool keepAlive = !http10;
    for (int i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        if (line.isEmpty())
            continue;
        const int colon = line.indexOf(':');
        if (colon <= 0) {
            refuseAndClose(socket, 400, "bad header line");
            return;
        }
        const QByteArray name = line.left(colon).trimmed();
        const QByteArray value = line.mid(colon + 1).trimmed();
        request.headers.append({name, value});
        if (name.compare("Content-Length", Qt::CaseInsensitive) == 0) {
            bool ok = false;
            contentLength = value.toLongLong(&ok);
            if (!ok || contentLength < 0) {
                refuseAndClose(socket, 400, "bad Content-Length");
                return;
            }
        } else if (name.compare("Transfer-Encoding", Qt::CaseInsensitive) == 0) {
            refuseAndClose(socket, 501, "chunked request bodies are not supported");
            return;
        } else if (name.compare("Connection", Qt::CaseInsensitive) == 0) {
            const QByteArray v = value.toLower();
            if (v.contains("close"))
                keepAlive = false;
            else if (v.contains("keep-alive"))
                keepAlive = true;
        }
    }
    if (contentLength > kMaxBodyBytes) {
        refuseAndClose(socket, 413, "request body too large");
        return;
    }
    const qsizetype total = headerEnd + 4 + qsizetype(contentLength);
    if (buf.size() < total)
        return; // wait for the rest of the body
    request.body = buf.mid(headerEnd + 4, qsizetype(contentLength));
    buf.remove(0, total);

    QByteArray rawPath = target;
    const int q = rawPath.indexOf('?');
    if (q >= 0) {
        request.query = rawPath.mid(q + 1);
        rawPath.truncate(q);
    }
    if (rawPath.startsWith("http://")) { // absolute form
        const int slash = rawPath.indexOf('/', 7);
        rawPath = slash < 0 ? QByteArray("/") : rawPath.mid(slash);
    }
    request.path = QString::fromUtf8(QByteArray::fromPercentEncoding(rawPath));
    while (request.path.startsWith(QLatin1Char('/')))
        request.path.remove(0, 1);
    request.parseParams();
    it->busy = true;
    dispatch(socket, request, keepAlive);
}

void SiteHttpServer::dispatch(QTcpSocket *socket, const SiteHttpRequest &request, bool keepAlive)
{
    QElapsedTimer timer;
    timer.start();
    if (m_recorder)
        m_recorder(request);
    auto it = m_connections.find(socket);
    if (m_faults->stalls(request.path)) {
        it->stalled = true;
        it->buffer.clear();
        if (m_log)
            qCInfo(lcSite).noquote() << request.method << request.path << "stalled";
        return;
    }
    const quint64 serial = it->serial;
    QPointer<QTcpSocket> guard(socket);
    auto run = [this, guard, serial, request, keepAlive, timer] {
        if (!guard || !m_connections.contains(guard.data()))
            return;
        QuorinSiteFaults::ErrorStatus error;
        QByteArray malformedBody;
        if (m_faults->errorStatus(request.path, &error)) {
            SiteHttpResponse r = SiteHttpResponse::bytes(error.body, "application/json; charset=utf-8", error.status);
            send(guard.data(), serial, request, r, keepAlive, timer);
            return;
        }
        if (m_faults->malformed(request.path, &malformedBody)) {
            send(guard.data(), serial, request, SiteHttpResponse::bytes(malformedBody, "application/json; charset=utf-8"),
                 keepAlive, timer);
            return;
        }
        if (!m_handler) {
            send(guard.data(), serial, request, SiteHttpResponse::bytes("{}", "application/json", 503), keepAlive, timer);
            return;
        }
        m_handler(request, [this, guard, serial, request, keepAlive, timer](const SiteHttpResponse &response) {
            if (guard)
                send(guard.data(), serial, request, response, keepAlive, timer);
        });
    };
    const int latency = m_faults->latencyMs();
    if (latency > 0)
        QTimer::singleShot(latency, this, run);
    else
        run();
}

void SiteHttpServer::send(QTcpSocket *socket, quint64 serial, const SiteHttpRequest &request, SiteHttpResponse response,
                          bool keepAlive, const QElapsedTimer &timer)
{
    auto it = m_connections.find(socket);
    if (it == m_connections.end() || it->serial != serial || !it->busy)
        return;
    QByteArray body = response.body;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(response.status) + ' '
        + SiteHttpResponse::reasonPhrase(response.status) + "\r\n";
    head += "Content-Type: " + response.contentType + "\r\n";
    const bool drop = m_faults->dropsMidBody(request.path);
    // A body to be cut short goes uncompressed: a client inflating on the fly may
    // otherwise count inflated bytes against the length and miss the cut.
    if (!drop && m_faults->gzip() && !body.isEmpty() && SiteGzip::accepted(request.header("Accept-Encoding"))) {
        const QByteArray packed = SiteGzip::compress(body);
        if (!packed.isEmpty()) {
            body = packed;
            head += "Content-Encoding: gzip\r\n";
        }
    }
    head += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    if (request.cookie("qsid").isEmpty()) {
        const QByteArray sid = QByteArray::number(QRandomGenerator::global()->generate64(), 16);
        head += "Set-Cookie: qsid=" + sid + "; Path=/; HttpOnly\r\n";
    }
    for (const auto &h : response.headers)
        head += h.first + ": " + h.second + "\r\n";
    const bool close = drop || !keepAlive;
    head += close ? "Connection: close\r\n\r\n" : "Connection: keep-alive\r\n\r\n";
    const bool headOnly = request.method == "HEAD";
    if (drop) {
        socket->write(head + body.left(body.size() / 2));
    } else {
        socket->write(headOnly ? head : head + body);
    }
    if (m_log) {
        qCInfo(lcSite).noquote() << request.method << request.path << response.status << body.size()
                                 << QStringLiteral("%1ms").arg(timer.elapsed()) << (drop ? "dropped" : "");
    }
    it->busy = false;
    if (close) {
        m_connections.remove(socket);
        socket->disconnectFromHost();
        return;
    }
    if (!it->buffer.isEmpty()) {
        QPointer<QTcpSocket> guard(socket);
        QTimer::singleShot(0, this, [this, guard] {
            if (guard)
                processBuffer(guard.data());
        });
    }
}
