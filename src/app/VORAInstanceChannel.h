#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

// One running app per app home: a second start hands its URLs to the running
// instance over a local socket and quits.
class VORAInstanceChannel : public QObject
{
    Q_OBJECT
public:
    explicit VORAInstanceChannel(QObject *parent = nullptr);

    // The local socket name of the current app home.
    static QString serverName();
    // Sends the URLs to a running instance; false when none is running.
    static bool forwardToRunningInstance(const QStringList &urls, const QString &name = serverName());
    // Becomes the running instance.
    bool listen(const QString &name = serverName());

signals:
    void urlReceived(const QString &url);

private:
    void onNewConnection();
    QLocalServer m_server;
};
