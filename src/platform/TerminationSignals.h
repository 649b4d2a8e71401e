#pragma once

#include <QObject>

class QSocketNotifier;

// SIGTERM and SIGINT as a Qt signal on the thread that created this object
// (the main thread): the handler only writes the signal's number to a socket
// pair, a QSocketNotifier reads it and received() is emitted from the event
// loop, so the app can quit and tear down normally. After the first one the
// default dispositions are back: a second SIGTERM or Ctrl-C ends the process
// at once if the teardown hangs. One instance per process.
class TerminationSignals : public QObject
{
    Q_OBJECT
public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

    bool isInstalled() const { return m_notifier != nullptr; }

signals:
    void received(int signalNumber);

private:
    void readSignal();
    QSocketNotifier *m_notifier = nullptr;
};
