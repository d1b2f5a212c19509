#pragma once

#include "tunnel/VPNController.h"

#include <QObject>

/// VPNActionState for QML, which wants an enumeration that the moc knows. Registered there as `VPNActionState`.
namespace tarnwik::vpn_action_states {

Q_NAMESPACE

enum State {
    CanConnect = static_cast<int>(VPNActionState::CanConnect),
    CanDisconnect = static_cast<int>(VPNActionState::CanDisconnect),
    InTransition = static_cast<int>(VPNActionState::InTransition),
};
Q_ENUM_NS(State)

} // namespace tarnwik::vpn_action_states
