#include "platform/gui/GuiDesktop.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

#include <algorithm>

namespace tarnwik {

namespace {

bool isWebAddress(const QUrl &url)
{
    return (url.scheme() == QStringLiteral("https") || url.scheme() == QStringLiteral("http")) && !url.host().isEmpty();
}

bool isMailAddress(const QUrl &url)
{
    return url.scheme() == QStringLiteral("mailto") && !url.path().isEmpty();
}

} // namespace

bool GuiDesktop::openURL(const QString &url)
{
    const QUrl address(url, QUrl::StrictMode);
    if (!address.isValid() || (!isWebAddress(address) && !isMailAddress(address)))
        return false;
    return QDesktopServices::openUrl(address);
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
