#include "cli/TunnelWait.h"

#include "async/Clock.h"
#include "async/Gate.h"
#include "platform/PlatformServices.h"

#include <utility>

namespace tarnwik::cli {

bool isDown(VPNStatus status)
{
    return status == VPNStatus::Invalid || status == VPNStatus::Disconnected;
}

bool hasSettled(VPNStatus status)
{
    return status == VPNStatus::Connected || isDown(status);
}

Task<bool> waitForTunnel(VPNController &tunnel, bool (*isReached)(VPNStatus), std::chrono::seconds limit,
                         std::stop_token token)
{
    const auto clock = PlatformServices::current().clock;
    async::Gate gate;
    const auto openWhenReached = [&] {
        if (isReached(tunnel.status()))
            gate.open();
    };
    QObject::connect(&tunnel, &VPNController::statusChanged, &gate, openWhenReached);
    clock->after(limit, &gate, [&gate] { gate.open(); });
    openWhenReached();
    co_await gate.wait(std::move(token));
    co_return isReached(tunnel.status());
}

Task<> waitForStart(VPNController &tunnel, std::stop_token token)
{
    if (!tunnel.lastDisconnectError())
        co_await waitForTunnel(tunnel, [](VPNStatus status) { return !isDown(status); }, systemDelay, std::move(token));
}

Task<> waitForReason(VPNController &tunnel, std::stop_token token)
{
    const PlatformServices services = PlatformServices::current();
    async::Gate gate;
    const auto openWhenTold = [&] {
        if (tunnel.lastDisconnectError())
            gate.open();
    };
    QObject::connect(services.tunnelManager.get(), &TunnelManager::statusDidChange, &gate, openWhenTold);
    services.clock->after(systemDelay, &gate, [&gate] { gate.open(); });
    openWhenTold();
    co_await gate.wait(std::move(token));
}

} // namespace tarnwik::cli
