#include "ui/model/AppearanceTasks.h"

#include "async/Clock.h"
#include "async/Detach.h"
#include "async/OwnerGuard.h"

#include <utility>

namespace tarnwik {

AppearanceTasks::AppearanceTasks(AppModel *model, AppStoreSubscriptionStore *store)
    : m_model(model)
    , m_store(store)
{
}

AppearanceTasks::~AppearanceTasks()
{
    for (auto &[handle, source] : m_running)
        source.request_stop();
}

int AppearanceTasks::begin(Kind kind)
{
    const int handle = ++m_lastHandle;
    std::stop_token token;
    if (kind != MenuBar)
        token = m_running[handle].get_token();
    async::detach(run(this, handle, perform(kind, m_model, m_store, token)));
    return handle;
}

void AppearanceTasks::end(int handle)
{
    if (auto task = m_running.extract(handle))
        task.mapped().request_stop();
}

Task<> AppearanceTasks::run(QPointer<AppearanceTasks> tasks, int handle, Task<> task)
{
    try {
        co_await task;
    } catch (const async::Cancelled &) {
        // Its screen is gone.
    }
    if (tasks)
        tasks->m_running.erase(handle);
}

Task<> AppearanceTasks::perform(Kind kind, Model model, Store store, std::stop_token token)
{
    co_await async::yield(token);
    if (!model || !store)
        co_return;
    switch (kind) {
    case Environment:
    case AccountScreen:
        co_await environment(store, token);
        break;
    case Dashboard:
        co_await dashboard(model, token);
        break;
    case ConnectScreen:
        co_await model->vpnController()->refreshStatus(token);
        break;
    case MenuBar:
        co_await menuBar(model, token);
        break;
    }
}

Task<> AppearanceTasks::environment(Store store, std::stop_token token)
{
    const async::OwnerGuard guard(store);
    store->startObservingTransactions();
    co_await store->loadProductsIfNeeded(token);
    guard.check();
    async::throwIfStopped(token);
    co_await store->refreshPurchasedProducts(token);
}

Task<> AppearanceTasks::dashboard(Model model, std::stop_token token)
{
    const async::OwnerGuard guard(model);
    co_await model->refreshFromUI(token);
    guard.check();
    model->startUsageRefreshLoop();
}

Task<> AppearanceTasks::menuBar(Model model, std::stop_token token)
{
    const async::OwnerGuard guard(model);
    co_await model->vpnController()->refreshStatus(token);
    guard.check();
    model->startUsageRefreshLoop();
}

} // namespace tarnwik
