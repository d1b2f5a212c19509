#include "platform/gui/GuiDesktop.h"

#include "platform/OutgoingLink.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace tarnwik {

bool GuiDesktop::openURL(const QString &url)
{
    const auto link = outgoingLink(url);
    return link && QDesktopServices::openUrl(*link);
}

void GuiDesktop::activateIgnoringOtherApps()
{
    const auto windows = QGuiApplication::topLevelWindows();
    const auto isShown = [](const QWindow *window) { return window->isVisible() && window->type() == Qt::Window; };
    if (std::ranges::any_of(windows, &QWindow::isActive))
        return;
    const auto front = std::ranges::find_if(windows, isShown);
    if (front == windows.end())
        return;
    (*front)->raise();
    (*front)->requestActivate();
}

void GuiDesktop::terminate()
{
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace tarnwik
