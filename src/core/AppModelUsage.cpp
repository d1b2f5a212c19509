// Keeping the account current.

#include "async/Clock.h"
#include "async/Detach.h"
#include "async/OwnerGuard.h"
#include "core/AppModel.h"
#include "platform/PlatformServices.h"

#include <QPointer>

#include <chrono>

namespace tarnwik {

namespace {

constexpr std::chrono::nanoseconds usageRefreshInterval{20'000'000'000};

} // namespace

void AppModel::startUsageRefreshLoop()
{
    if (m_usageRefreshTask || !isSignedIn())
        return;
    m_usageRefreshTask.emplace();
    async::detach(usageRefreshLoop(this, m_usageRefreshTask->get_token()));
}

void AppModel::stopUsageRefreshLoop()
{
    if (m_usageRefreshTask)
        m_usageRefreshTask->request_stop();
    m_usageRefreshTask.reset();
}

Task<> AppModel::usageRefreshLoop(QPointer<AppModel> model, std::stop_token token)
{
    const auto clock = PlatformServices::current().clock;
    while (!token.stop_requested()) {
        co_await async::sleep(*clock, usageRefreshInterval, token);
        if (model)
            co_await model->refreshAccountInBackground(token);
    }
}

Task<> AppModel::refreshAccountInBackground(std::stop_token token)
{
    if (!isSignedIn()) {
        stopUsageRefreshLoop();
        co_return;
    }
    try {
        co_await refreshAccount(token);
    } catch (...) {
        // Nobody asked for this fetch, so nobody is told that it failed. The next one is 20 seconds away.
    }
}

Task<> AppModel::refreshAccount(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const Account account = co_await m_apiClient.account(std::move(token));
    guard.check();
    m_account = account;
}

Task<> AppModel::syncAppleTransaction(QString signedTransactionJWS, std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const Account account =
        co_await m_apiClient.syncAppleTransaction(std::move(signedTransactionJWS), std::move(token));
    guard.check();
    m_account = account;
}

} // namespace tarnwik
