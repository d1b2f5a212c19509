#include "ui/model/EnablingRules.h"

namespace tarnwik {

ModelState ModelState::of(const AppModel &model)
{
    return {.isSignedIn = model.isSignedIn(),
            .isLoading = model.isLoading(),
            .hasSelectedNode = model.selectedNode().has_value(),
            .actionState = model.vpnController()->actionState()};
}

} // namespace tarnwik
