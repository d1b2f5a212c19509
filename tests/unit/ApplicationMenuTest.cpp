#include "support/ModelFixture.h"
#include "ui/app/GlobalMenu.h"
#include "ui/model/ApplicationActions.h"

#include <QMenu>

namespace tarnwik::test {

namespace {

/// The application menu as it is filled, on either kind of desktop.
class ApplicationMenu : public ModelTest
{
protected:
    QStringList fill(DesktopMenuBar menuBar)
    {
        fillApplicationMenu(&m_menu, &m_actions, menuBar);
        QStringList items;
        for (const QAction *item : m_menu.actions()) {
            const QString keys = item->shortcut().toString(QKeySequence::PortableText);
            items << (item->isSeparator() ? text("---") : keys.isEmpty() ? item->text() : item->text() + u' ' + keys);
        }
        return items;
    }

    AppModel m_model;
    ApplicationActions m_actions{&m_model, m_platform.desktop};
    QMenu m_menu;
};

TEST_F(ApplicationMenu, holdsTheCommandsAndQuit)
{
    EXPECT_EQ(fill(DesktopMenuBar::Optional),
              (QStringList{text("Open Dashboard Ctrl+0"), text("---"), text("Connect Ctrl+Shift+C"), text("---"),
                           text("Refresh Ctrl+R"), text("Settings"), text("---"), text("Sign Out"), text("---"),
                           text("Quit Ctrl+Q")}));
}

TEST_F(ApplicationMenu, ofTheSystemsBarHasTheSystemsItemsInTheProgramsOwnMenu)
{
    fill(DesktopMenuBar::Always);
    QStringList shown;
    for (const QAction *item : m_menu.actions()) {
        if (item->menuRole() == QAction::PreferencesRole)
            EXPECT_EQ(item->shortcut(), QKeySequence(QKeySequence::Preferences));
        else if (item->menuRole() == QAction::QuitRole)
            EXPECT_EQ(item->text(), text("Quit"));
        else
            shown << (item->isSeparator() ? text("---") : item->text());
        if (item->text() == text("Settings") && item->menuRole() == QAction::NoRole)
            EXPECT_TRUE(item->shortcut().isEmpty());
    }
    EXPECT_EQ(shown,
              (QStringList{text("Open Dashboard"), text("---"), text("Connect"), text("---"), text("Refresh"),
                           text("Settings"), text("---"), text("Sign Out")}));
}

} // namespace
} // namespace tarnwik::test
