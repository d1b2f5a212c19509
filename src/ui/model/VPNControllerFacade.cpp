#include "ui/model/VPNControllerFacade.h"

namespace tarnwik {

VPNControllerFacade::VPNControllerFacade(const VPNController *controller)
    : m_controller(controller)
{
    QObject::connect(controller, &VPNController::statusChanged, this, &VPNControllerFacade::update);
    update();
}

void VPNControllerFacade::update()
{
    const QString statusLabel = m_controller->statusLabel();
    const VPNActionState actionState = m_controller->actionState();
    // Several statuses read the same.
    if (statusLabel == m_statusLabel && actionState == m_actionState)
        return;
    m_statusLabel = statusLabel;
    m_actionState = actionState;
    Q_EMIT changed();
}

} // namespace tarnwik
