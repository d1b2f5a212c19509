#pragma once

#include "core/AppModel.h"
#include "support/ModelFixture.h"

#include <QSignalSpy>

namespace tarnwik::test {

/// A model with a stored session, for what stands on it.
class UIModelTest : public ModelTest
{
protected:
    UIModelTest() { storeSession(); }

    /// The model, made at its first use: a test may change the stored session before.
    AppModel &model()
    {
        if (!m_model)
            m_model = std::make_unique<AppModel>();
        return *m_model;
    }

    void signOut()
    {
        run(model().signOut());
        forgetRequests();
    }

    void refresh()
    {
        run(model().refresh());
        forgetRequests();
    }

    /// Starts an operation of the screens that does not end before finishLoading().
    void startLoading()
    {
        m_answers.remove(m_getAccount);
        m_loading.emplace(model().refreshFromUI());
        ASSERT_TRUE(model().isLoading());
    }

    void finishLoading()
    {
        m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
        m_loading->result();
        ASSERT_FALSE(model().isLoading());
    }

    /// The system tells that the program's tunnel has another status.
    void setStatus(VPNStatus status)
    {
        tunnel().currentStatus = status;
        Q_EMIT m_platform.tunnelManager->statusDidChange();
        settleEvents();
        ASSERT_EQ(model().vpnController()->status(), status);
    }

    /// The program's tunnel configuration: a saved one, unless the model has made its own by now.
    FakeTunnelConfiguration &tunnel()
    {
        FakeTunnelManager &manager = *m_platform.tunnelManager;
        if (!m_tunnel && model().vpnController()->hasManager())
            m_tunnel = manager.created.back();
        if (!m_tunnel)
            m_tunnel = manager.addSaved(text("Tarnwik"));
        run(model().vpnController()->refreshStatus());
        manager.operations.clear();
        return *m_tunnel;
    }

    std::unique_ptr<AppModel> m_model;
    std::shared_ptr<FakeTunnelConfiguration> m_tunnel;
    std::optional<Running<>> m_loading;
};

} // namespace tarnwik::test
