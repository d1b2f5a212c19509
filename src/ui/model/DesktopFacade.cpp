#include "ui/model/DesktopFacade.h"

#include "platform/Desktop.h"

#include <utility>

namespace tarnwik {

DesktopFacade::DesktopFacade(std::shared_ptr<Desktop> desktop)
    : m_desktop(std::move(desktop))
{
}

bool DesktopFacade::openURL(const QString &url)
{
    return m_desktop->openURL(url);
}

} // namespace tarnwik
