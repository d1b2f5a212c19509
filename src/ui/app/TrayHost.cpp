#include "ui/app/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace tarnwik {

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");
const QString interface = QStringLiteral("org.kde.StatusNotifierWatcher");

} // namespace

TrayHost::TrayHost(QDBusConnection bus, DesktopMenuBar menuBar)
    : m_bus(std::move(bus))
    , m_watcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    if (menuBar == DesktopMenuBar::Always) {
        m_isPresent = true;
        return;
    }
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayHost::ask);
    for (const auto &signal :
         {QStringLiteral("StatusNotifierHostRegistered"), QStringLiteral("StatusNotifierHostUnregistered")})
        m_bus.connect({}, path, interface, signal, this, SLOT(ask()));
    ask();
}

void TrayHost::ask()
{
    if (!m_bus.isConnected()) {
        setPresent(false);
        return;
    }
    auto question = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("Get"));
    question << interface << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    const int number = ++m_lastQuestion;
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [this, number](QDBusPendingCallWatcher *finished) {
                         finished->deleteLater();
                         if (number != m_lastQuestion)
                             return;
                         const QDBusPendingReply<QDBusVariant> reply = *finished;
                         setPresent(!reply.isError() && reply.value().variant().toBool());
                     });
}

void TrayHost::setPresent(bool isPresent)
{
    if (isPresent == m_isPresent)
        return;
    m_isPresent = isPresent;
    Q_EMIT isPresentChanged();
}

} // namespace tarnwik
