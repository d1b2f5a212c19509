#include "support/tray/TestTrayWatcher.h"

namespace tarnwik::test {

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TestTrayWatcher::TestTrayWatcher(QDBusConnection bus, bool hasHost)
    : m_bus(std::move(bus))
    , m_hasHost(hasHost)
{
    m_bus.registerObject(path, this, QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSignals);
    m_bus.registerService(service);
}

TestTrayWatcher::~TestTrayWatcher()
{
    m_bus.unregisterService(service);
    m_bus.unregisterObject(path);
}

void TestTrayWatcher::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    if (hasHost)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

} // namespace tarnwik::test
