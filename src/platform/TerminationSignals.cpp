#include "platform/TerminationSignals.h"
#include "platform/PlatformLog.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_pipe[2] = {-1, -1}; // [0] written by the handler, [1] read by the notifier

void onSignal(int number)
{
    const char byte = char(number);
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[0], &byte, 1);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &action, nullptr);
    ::sigaction(SIGINT, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    if (g_pipe[0] >= 0 || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, g_pipe) != 0) {
        qCWarning(lcPlatform) << "SIGTERM and SIGINT keep their default action";
        return;
    }
    m_notifier = new QSocketNotifier(g_pipe[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::readSignal);
    setHandler(onSignal);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    ::close(g_pipe[0]);
    ::close(g_pipe[1]);
    g_pipe[0] = g_pipe[1] = -1;
}

void TerminationSignals::readSignal()
{
    char byte = 0;
    while (::read(g_pipe[1], &byte, 1) == 1) {
        setHandler(SIG_DFL);
        qCInfo(lcPlatform) << "received signal" << int(byte) << "- quitting";
        emit received(int(byte));
    }
}
