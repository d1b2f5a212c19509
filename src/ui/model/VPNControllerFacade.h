#pragma once

#include "tunnel/VPNController.h"

#include <QObject>

namespace tarnwik {

/// The VPN controller as the screens and menus see it. Lives on the main thread.
class VPNControllerFacade final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString statusLabel READ statusLabel NOTIFY changed)

public:
    /// \a controller must outlive this object.
    explicit VPNControllerFacade(const VPNController *controller);

    QString statusLabel() const { return m_statusLabel; }

    /// What the connect/disconnect control offers.
    VPNActionState actionState() const { return m_actionState; }

Q_SIGNALS:
    /// Label or state is another one.
    void changed();

private:
    void update();

    const VPNController *m_controller;
    QString m_statusLabel;
    VPNActionState m_actionState = VPNActionState::CanConnect;
};

} // namespace tarnwik
