#pragma once

#include "ui/app/Appearance.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>

#include <optional>

class QDBusVariant;

namespace tarnwik {

/// Reads the look that the user set from the desktop's portal, and follows its changes. Where there is no portal, the
/// appearance keeps its defaults. Lives on the main thread.
class PortalSettings : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal on \a bus at once, without waiting for its answer. \a appearance must live as long as this.
    PortalSettings(QDBusConnection bus, Appearance *appearance, QObject *parent = nullptr);

    /// Takes the portal's answer if it has come by now, so that the first picture is right.
    void takeWhatHasCome();

private:
    Q_SLOT void takeChange(const QString &space, const QString &key, const QDBusVariant &value);
    void take(const QDBusPendingCall &answer);

    Appearance *const m_appearance;
    std::optional<QDBusPendingCall> m_answer;
};

} // namespace tarnwik
