#pragma once

#include "ui/app/SingleInstance.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>

namespace tarnwik {

/// What the desktop calls to start the program or bring it to the front: org.freedesktop.Application. There are no files
/// to open and no further actions, so that all of it comes to that.
class ApplicationInterface : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationInterface(SingleInstance *instance)
        : QDBusAbstractAdaptor(instance)
        , m_instance(instance)
    {
    }

    static QString name() { return QStringLiteral("org.freedesktop.Application"); }

    // The operations' names are those on the bus.
    Q_SLOT void Activate(const QVariantMap &platformData) { Q_EMIT m_instance->activated(platformData); }

    Q_SLOT void Open(const QStringList &, const QVariantMap &platformData)
    {
        Q_EMIT m_instance->activated(platformData);
    }

    Q_SLOT void ActivateAction(const QString &, const QVariantList &, const QVariantMap &platformData)
    {
        Q_EMIT m_instance->activated(platformData);
    }

private:
    SingleInstance *const m_instance;
};

} // namespace tarnwik
