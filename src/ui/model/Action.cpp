#include "ui/model/Action.h"

#include <utility>

namespace tarnwik {

Action::Action(Look look, std::function<void()> perform)
    : m_look(std::move(look))
    , m_perform(std::move(perform))
{
}

void Action::setEnabled(bool isEnabled)
{
    Look look = m_look;
    look.isEnabled = isEnabled;
    setLook(look);
}

void Action::setLook(const Look &look)
{
    if (look == m_look)
        return;
    m_look = look;
    Q_EMIT changed();
}

void Action::trigger()
{
    if (isEnabled())
        perform();
}

} // namespace tarnwik
