#pragma once

#include "platform/gui/SystemDesktop.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

namespace tarnwik {

/// Tells whether the desktop has a place for tray icons at present. It is asked without waiting. Lives on the main
/// thread.
class TrayHost : public QObject
{
    Q_OBJECT

public:
    /// A place in a menu bar that is always there is not asked for.
    explicit TrayHost(QDBusConnection bus, DesktopMenuBar menuBar = DesktopMenuBar::Optional);

    /// Nothing until the desktop has answered, where it can be asked.
    std::optional<bool> isPresent() const { return m_isPresent; }

Q_SIGNALS:
    void isPresentChanged();

private:
    Q_SLOT void ask();
    void setPresent(bool isPresent);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    /// Answers to questions before the last one are out of date.
    int m_lastQuestion = 0;
    std::optional<bool> m_isPresent;
};

} // namespace tarnwik
