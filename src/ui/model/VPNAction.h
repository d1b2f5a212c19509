#pragma once

#include "core/AppModel.h"
#include "ui/model/Action.h"

namespace tarnwik {

/// Connect or Disconnect, whichever the tunnel's status allows; the status in words while it changes.
class VPNAction final : public Action
{
    Q_OBJECT
    Q_PROPERTY(int state READ stateNumber NOTIFY stateChanged)
    Q_PROPERTY(bool isEnabledOnScreen READ isEnabledOnScreen NOTIFY stateChanged)

public:
    /// \a model must outlive this object.
    explicit VPNAction(AppModel *model);

    /// What a trigger would do. For QML the state is a number.
    VPNActionState state() const { return m_state; }

    /// Whether the Connect screen offers it, which does not ask for a session as the menus do.
    bool isEnabledOnScreen() const { return m_isEnabledOnScreen; }

    /// Connects or disconnects. Nothing happens while neither menu nor screen offers it.
    void trigger() override;

Q_SIGNALS:
    void stateChanged();

private:
    int stateNumber() const { return static_cast<int>(m_state); }
    void update();

    AppModel *m_model;
    VPNActionState m_state = VPNActionState::CanConnect;
    bool m_isEnabledOnScreen = false;
};

} // namespace tarnwik
