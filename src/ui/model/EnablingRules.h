#pragma once

#include "core/AppModel.h"

namespace tarnwik {

/// All that decides what the user may do at a moment.
struct ModelState
{
    bool isSignedIn = false;
    /// An operation of the screens is under way.
    bool isLoading = false;
    bool hasSelectedNode = false;
    VPNActionState actionState = VPNActionState::CanConnect;

    /// The state of \a model and its VPN controller now.
    static ModelState of(const AppModel &model);
};

/// What the menus and the screens offer. The menus are there without a session, the screens are not: that is why the
/// Connect screen's rule is the shorter one.
namespace enabling {

/// Connect or Disconnect on the Connect screen.
constexpr bool isVPNControlEnabled(const ModelState &state)
{
    switch (state.actionState) {
    case VPNActionState::CanConnect:
        return !state.isLoading && state.hasSelectedNode;
    case VPNActionState::CanDisconnect:
        return !state.isLoading;
    case VPNActionState::InTransition:
        break;
    }
    return false;
}

/// Connect or Disconnect in the menus. A tunnel can be stopped without a session, for it is this computer's.
constexpr bool isVPNCommandEnabled(const ModelState &state)
{
    return isVPNControlEnabled(state) && (state.isSignedIn || state.actionState != VPNActionState::CanConnect);
}

/// Refresh and Sign Out in the menus.
constexpr bool isSessionCommandEnabled(const ModelState &state)
{
    return state.isSignedIn && !state.isLoading;
}

} // namespace enabling
} // namespace tarnwik
