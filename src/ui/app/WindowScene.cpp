#include "ui/app/WindowScene.h"

#include <QQmlComponent>
#include <QQuickWindow>

namespace tarnwik {

WindowScene::WindowScene(QQmlEngine *engine, QUrl url, QVariantMap properties)
    : m_engine(engine)
    , m_url(std::move(url))
    , m_properties(std::move(properties))
{
}

WindowScene::~WindowScene()
{
    // The window hides as it goes, when those who listen may be gone already.
    if (m_window)
        m_window->disconnect(this);
}

QQuickWindow *WindowScene::window()
{
    if (m_window)
        return m_window.get();
    QQmlComponent component(m_engine, m_url);
    std::unique_ptr<QObject> object(component.createWithInitialProperties(m_properties));
    m_window.reset(qobject_cast<QQuickWindow *>(object.get()));
    if (!m_window)
        qFatal("%s", qUtf8Printable(component.errorString()));
    object.release(); // NOLINT(bugprone-unused-return-value): m_window has it.
    QObject::connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            Q_EMIT closed();
    });
    return m_window.get();
}

void WindowScene::open()
{
    QQuickWindow *shown = window();
    if (shown->windowStates().testFlag(Qt::WindowMinimized))
        shown->setWindowStates(shown->windowStates() & ~Qt::WindowMinimized);
    // Not show(), which would take back that a window is maximised.
    shown->setVisible(true);
    shown->raise();
    shown->requestActivate();
}

bool WindowScene::isOpen() const
{
    return m_window && m_window->isVisible();
}

} // namespace tarnwik
