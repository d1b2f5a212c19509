#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace tarnwik {

/// One of the program's windows, which QML describes: made when it is first asked for. Lives on the main thread.
class WindowScene final : public QObject
{
    Q_OBJECT

public:
    /// \a url is that of the component; \a properties are what its window requires. A component that cannot be made
    /// is a mistake in the program, and ends it.
    WindowScene(QQmlEngine *engine, QUrl url, QVariantMap properties);
    ~WindowScene() override;

    /// Makes the window, without showing it, and leaves it be if there is one.
    QQuickWindow *window();

    /// Shows the window if it is not shown, and brings it to the front.
    void open();

    bool isOpen() const;

Q_SIGNALS:
    void closed();

private:
    QQmlEngine *const m_engine;
    const QUrl m_url;
    const QVariantMap m_properties;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace tarnwik
