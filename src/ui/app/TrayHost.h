#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace tarnwik {

/// Tells whether the desktop has a place for tray icons at present. It is asked without waiting. Lives on the main
/// thread.
class TrayHost : public QObject
{
    Q_OBJECT

public:
    explicit TrayHost(QDBusConnection bus, QObject *parent = nullptr);

    /// False until the desktop has answered.
    bool isPresent() const { return m_isPresent; }

Q_SIGNALS:
    void isPresentChanged();

private:
    Q_SLOT void ask();
    void setPresent(bool isPresent);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    /// Answers to questions before the last one are out of date.
    int m_lastQuestion = 0;
    bool m_isPresent = false;
};

} // namespace tarnwik
