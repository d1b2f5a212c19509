#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace tarnwik::test {

/// A desktop's place for tray icons, as far as programs ask whether there is one. It goes with the object.
class TestTrayWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_hasHost)

public:
    TestTrayWatcher(QDBusConnection bus, bool hasHost);
    ~TestTrayWatcher() override;

    /// A panel comes, or goes.
    void setHasHost(bool hasHost);

Q_SIGNALS: // Named as on the bus.
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusConnection m_bus;
    bool m_hasHost;
};

} // namespace tarnwik::test
