#pragma once

#include "tunnel/VPNController.h"
#include "ui/model/AppearanceTasks.h"

#include <QtQml/qqml.h>

/// The models' enumerations under the names that the screens use. They are said again here, since the models know
/// nothing of QML.
namespace tarnwik::screens {

namespace vpn_action_state {

Q_NAMESPACE
QML_NAMED_ELEMENT(VPNActionState)

enum State {
    CanConnect = static_cast<int>(tarnwik::VPNActionState::CanConnect),
    CanDisconnect = static_cast<int>(tarnwik::VPNActionState::CanDisconnect),
    InTransition = static_cast<int>(tarnwik::VPNActionState::InTransition),
};
Q_ENUM_NS(State)

} // namespace vpn_action_state

/// The menu bar's task is not named here: no screen begins it.
namespace appearance_tasks {

Q_NAMESPACE
QML_NAMED_ELEMENT(AppearanceTasks)

enum Kind {
    Environment = AppearanceTasks::Environment,
    Dashboard = AppearanceTasks::Dashboard,
    ConnectScreen = AppearanceTasks::ConnectScreen,
    AccountScreen = AppearanceTasks::AccountScreen,
};
Q_ENUM_NS(Kind)

} // namespace appearance_tasks

} // namespace tarnwik::screens
