#pragma once

#include <QQmlEngine>
#include <QQuickView>

#include <memory>

namespace tarnwik::test {

/// A window that shows one piece of QML with the controls.
class ControlsWindow
{
public:
    /// Shows \a body, the children of a 400 × 300 item, under the usual theme.
    explicit ControlsWindow(const QByteArray &body);

    QQuickView &view() { return m_view; }
    QQmlEngine &engine() { return *m_view.engine(); }

    /// The item with this object name.
    QQuickItem *item(const QString &name) const;

    /// Sets a property of this window's theme.
    void setTheme(const char *property, const QVariant &value);

private:
    QQuickView m_view;
};

} // namespace tarnwik::test
