#include "ui/app/WindowPlaceKeeper.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace tarnwik {

namespace {

/// While the user drags or sizes the window it changes many times a second; only where it comes to rest counts.
constexpr std::chrono::milliseconds restTime(500);

QList<QRect> availableScreens()
{
    QList<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return screens;
}

} // namespace

WindowPlaceKeeper::WindowPlaceKeeper(WindowPlaceFile file, QWindow *window)
    : QObject(window)
    , m_file(std::move(file))
    , m_window(window)
{
    restore();
    m_settled.setSingleShot(true);
    m_settled.setInterval(restTime);
    m_settled.callOnTimeout(this, &WindowPlaceKeeper::save);
    const auto settleAnew = [this] { m_settled.start(); };
    QObject::connect(window, &QWindow::xChanged, this, settleAnew);
    QObject::connect(window, &QWindow::yChanged, this, settleAnew);
    QObject::connect(window, &QWindow::widthChanged, this, settleAnew);
    QObject::connect(window, &QWindow::heightChanged, this, settleAnew);
    QObject::connect(window, &QWindow::windowStateChanged, this, settleAnew);
    QObject::connect(qApp, &QGuiApplication::aboutToQuit, this, &WindowPlaceKeeper::save);
    window->installEventFilter(this);
}

bool WindowPlaceKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close)
        save();
    return QObject::eventFilter(watched, event);
}

void WindowPlaceKeeper::restore()
{
    m_place = m_file.read();
    m_written = m_place;
    if (!m_place)
        return;
    m_window->setGeometry(fittedToScreens(m_place->geometry, availableScreens(), m_window->minimumSize()));
    if (m_place->isMaximized)
        m_window->setWindowStates(m_window->windowStates() | Qt::WindowMaximized);
}

void WindowPlaceKeeper::take()
{
    const Qt::WindowStates states = m_window->windowStates();
    if (!m_window->isVisible() || states.testFlag(Qt::WindowMinimized) || states.testFlag(Qt::WindowFullScreen))
        return;
    WindowPlace place = m_place.value_or(WindowPlace{m_window->geometry(), false});
    place.isMaximized = states.testFlag(Qt::WindowMaximized);
    if (!place.isMaximized)
        place.geometry = m_window->geometry();
    m_place = place;
}

void WindowPlaceKeeper::save()
{
    m_settled.stop();
    take();
    if (m_place && m_place != m_written && m_file.write(*m_place))
        m_written = m_place;
}

} // namespace tarnwik
