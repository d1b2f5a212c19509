#include "ui/controls/ControlsWindow.h"

#include "ui/app/AccessibilityFactory.h"
#include "ui/controls/ControlsModule.h"

#include <QQmlComponent>
#include <QQuickItem>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

/// Before the first window is made: this machine may have no graphics card.
const bool isSoftware = qputenv("QT_QUICK_BACKEND", "software");

} // namespace

ControlsWindow::ControlsWindow(const QByteArray &body)
{
    EXPECT_TRUE(isSoftware);
    // What is read out is what the program makes of it.
    installAccessibilityFactory();
    addControlsModule(engine());

    QQmlComponent component(&engine());
    component.setData("import QtQuick\nimport Tarnwik.Controls\nItem { width: 400; height: 300\n"
                      "readonly property QtObject theme: Theme\n"
                          + body + "\n}",
                      {});
    auto *root = component.create();
    EXPECT_TRUE(root) << component.errorString().toStdString();
    m_view.setContent({}, nullptr, root);
    m_view.show();
}

QQuickItem *ControlsWindow::item(const QString &name) const
{
    auto *found = m_view.rootObject()->findChild<QQuickItem *>(name);
    EXPECT_TRUE(found) << name.toStdString();
    return found;
}

void ControlsWindow::setTheme(const char *property, const QVariant &value)
{
    auto *theme = m_view.rootObject()->property("theme").value<QObject *>();
    EXPECT_TRUE(theme->setProperty(property, value)) << property;
}

} // namespace tarnwik::test
