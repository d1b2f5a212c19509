#pragma once

#include "tunnel/VPNController.h"

#include <QObject>

namespace tarnwik {

/// The VPN controller as QML sees it. Lives on the main thread.
class VPNControllerFacade final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString statusLabel READ statusLabel NOTIFY changed)
    Q_PROPERTY(int actionState READ actionState NOTIFY changed)

public:
    /// \a controller must outlive this object.
    explicit VPNControllerFacade(const VPNController *controller);

    QString statusLabel() const { return m_statusLabel; }

    /// A VPNActionState: vpn_action_states names them for QML.
    int actionState() const { return m_actionState; }

Q_SIGNALS:
    void changed();

private:
    void update();

    const VPNController *m_controller;
    QString m_statusLabel;
    int m_actionState = 0;
};

} // namespace tarnwik
