#include "cli/Watch.h"

#include "async/Gate.h"
#include "core/AppModel.h"

namespace tarnwik::cli {

Task<> watchChanges(AppModel &model, std::function<void()> print, std::stop_token token)
{
    while (model.isSignedIn()) {
        print();
        async::Gate changed;
        const auto open = [&changed] { changed.open(); };
        QObject::connect(model.vpnController(), &VPNController::statusChanged, &changed, open);
        QObject::connect(&model, &AppModel::accountChanged, &changed, open);
        QObject::connect(&model, &AppModel::authTokenChanged, &changed, open);
        co_await changed.wait(token);
    }
}

} // namespace tarnwik::cli
