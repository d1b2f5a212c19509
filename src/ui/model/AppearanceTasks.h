#pragma once

#include "core/AppModel.h"
#include "store/AppStoreSubscriptionStore.h"

#include <QObject>
#include <QPointer>

#include <map>
#include <stop_token>

namespace tarnwik {

/// What screens do when they appear. These tasks, unlike those of buttons, are stopped when their screen goes. Lives
/// on the main thread; its end stops all of them.
class AppearanceTasks final : public QObject
{
    Q_OBJECT

public:
    enum Kind {
        /// Any window: follow the store's transactions, load its products, read what the user is entitled to.
        Environment,
        /// The dashboard: fetch everything, then keep the usage current.
        Dashboard,
        /// The Connect screen: ask for the tunnel's status.
        ConnectScreen,
        /// The Account screen: the same as for a window.
        AccountScreen,
        /// The menu of the menu bar: ask for the tunnel's status, then keep the usage current while signed in. Not
        /// stopped, since a menu is gone as soon as something was chosen from it.
        MenuBar,
    };
    Q_ENUM(Kind)

    /// \a model and \a store must outlive this object.
    AppearanceTasks(AppModel *model, AppStoreSubscriptionStore *store);
    ~AppearanceTasks() override;

    /// Starts a screen's task; the handle to end it with. The task's first step is taken on a later turn of the event
    /// loop: a screen may appear in the middle of an operation of the model.
    Q_INVOKABLE int begin(tarnwik::AppearanceTasks::Kind kind);

    /// Stops the task of a screen that goes. One that has ended, or is none, is ignored.
    Q_INVOKABLE void end(int handle);

    /// How many tasks run that can be stopped.
    qsizetype runningCount() const { return static_cast<qsizetype>(m_running.size()); }

private:
    using Model = QPointer<AppModel>;
    using Store = QPointer<AppStoreSubscriptionStore>;

    static Task<> run(QPointer<AppearanceTasks> tasks, int handle, Task<> task);
    static Task<> perform(Kind kind, Model model, Store store, std::stop_token token);
    static Task<> environment(Store store, std::stop_token token);
    static Task<> dashboard(Model model, std::stop_token token);
    static Task<> menuBar(Model model, std::stop_token token);

    Model m_model;
    Store m_store;
    int m_lastHandle = 0;
    std::map<int, std::stop_source> m_running;
};

} // namespace tarnwik
