#include "ui/model/VPNAction.h"

#include "async/Detach.h"
#include "ui/model/EnablingRules.h"

#include <utility>

namespace tarnwik {

namespace {

void performOn(AppModel &model)
{
    switch (model.vpnController()->actionState()) {
    case VPNActionState::CanConnect:
        async::detach(model.connect());
        break;
    case VPNActionState::CanDisconnect:
        async::detach(model.disconnect());
        break;
    case VPNActionState::InTransition:
        break;
    }
}

Action::Look lookOf(const ModelState &state, const VPNController &controller)
{
    Action::Look look;
    look.isEnabled = enabling::isVPNCommandEnabled(state);
    switch (state.actionState) {
    case VPNActionState::CanConnect:
        look.title = QStringLiteral("Connect");
        look.symbol = QStringLiteral("power");
        look.shortcut = QStringLiteral("Ctrl+Shift+C");
        break;
    case VPNActionState::CanDisconnect:
        look.title = QStringLiteral("Disconnect");
        look.symbol = QStringLiteral("xmark.circle");
        look.shortcut = QStringLiteral("Ctrl+Shift+D");
        break;
    case VPNActionState::InTransition:
        look.title = controller.statusLabel();
        break;
    }
    return look;
}

} // namespace

VPNAction::VPNAction(AppModel *model)
    : Action({}, [model] { performOn(*model); })
    , m_model(model)
{
    for (const auto changed : {&AppModel::authTokenChanged, &AppModel::isLoadingChanged, &AppModel::nodesChanged})
        QObject::connect(model, changed, this, &VPNAction::update);
    QObject::connect(model->vpnController(), &VPNController::statusChanged, this, &VPNAction::update);
    update();
}

void VPNAction::update()
{
    const ModelState state = ModelState::of(*m_model);
    const VPNActionState formerState = std::exchange(m_state, state.actionState);
    const bool wasEnabledOnScreen = std::exchange(m_isEnabledOnScreen, enabling::isVPNControlEnabled(state));
    setLook(lookOf(state, *m_model->vpnController()));
    if (m_state != formerState || m_isEnabledOnScreen != wasEnabledOnScreen)
        Q_EMIT stateChanged();
}

void VPNAction::trigger()
{
    if (isEnabledOnScreen())
        perform();
}

} // namespace tarnwik
