#include "support/SessionBus.h"

#include "support/EventLoop.h"

#include <QFile>
#include <QUuid>

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

namespace tarnwik::test {

namespace {

const char *const configuration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type><listen>unix:path=%1</listen><auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

SessionBus::SessionBus()
    : m_address(QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus")))
{
    QFile file(m_folder.filePath(QStringLiteral("session.conf")));
    file.open(QIODevice::WriteOnly);
    file.write(QString::fromLatin1(configuration).arg(m_folder.filePath(QStringLiteral("bus"))).toUtf8());
    file.close();
    // It must not outlive a test that is killed.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // It complains where it may not raise its own limits, which matters to nobody here.
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    const auto listens = [this] { return m_daemon.canReadLine(); };
    if (!spinUntil(listens))
        throw std::runtime_error("dbus-daemon did not start");
}

SessionBus::~SessionBus()
{
    for (const QString &name : std::as_const(m_connections))
        QDBusConnection::disconnectFromBus(name);
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QDBusConnection SessionBus::connection()
{
    m_connections.append(QUuid::createUuid().toString());
    return QDBusConnection::connectToBus(m_address, m_connections.last());
}

} // namespace tarnwik::test
