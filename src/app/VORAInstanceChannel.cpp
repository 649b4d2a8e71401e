#include "VORAInstanceChannel.h"

#include "AppLog.h"
#include "platform/AppDirectories.h"

#include <QCryptographicHash>
#include <QLocalSocket>

VORAInstanceChannel::VORAInstanceChannel(QObject *parent)
    : QObject(parent)
{
    connect(&m_server, &QLocalServer::newConnection, this, &VORAInstanceChannel::onNewConnection);
}

QString VORAInstanceChannel::serverName()
{
    const QByteArray hash = QCryptographicHash::hash(AppDirectories::home().toUtf8(), QCryptographicHash::Sha1).toHex();
    return QStringLiteral("quorin-reader-") + QString::fromLatin1(hash.left(16));
}

bool VORAInstanceChannel::forwardToRunningInstance(const QStringList &urls, const QString &name)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(500))
        return false;
    for (const QString &url : urls)
        socket.write(url.toUtf8() + '\n');
    socket.flush();
    socket.waitForBytesWritten(1000);
    socket.disconnectFromServer();
    if (socket.state() != QLocalSocket::UnconnectedState)
        socket.waitForDisconnected(1000);
    return true;
}

bool VORAInstanceChannel::listen(const QString &name)
{
    if (m_server.listen(name))
        return true;
    // A socket file left by a crashed instance.
    QLocalServer::removeServer(name);
    if (m_server.listen(name))
        return true;
    qCWarning(lcApp) << "cannot listen for other starts:" << m_server.errorString();
    return false;
}

void VORAInstanceChannel::onNewConnection()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            while (socket->canReadLine()) {
                const QString line = QString::fromUtf8(socket->readLine()).trimmed();
                if (line.size() > 4096) {
                    qCWarning(lcApp) << "ignoring an over-long URL from another start";
                    continue;
                }
                if (!line.isEmpty())
                    emit urlReceived(line);
            }
        });
    }
}
