#pragma once

#include "ui/app/Appearance.h"

#include <QSystemTrayIcon>

class QMenu;

namespace tarnwik {

/// The program's icon in the desktop's tray: "TarnwikMenuBarIcon", which the desktop tints. To be made only once the
/// desktop has a tray: Qt asks for one a single time.
class TarnwikMenuBarLabel final : public QObject
{
    Q_OBJECT

public:
    /// \a menu and \a appearance must outlive this object.
    TarnwikMenuBarLabel(QMenu *menu, const Appearance *appearance);

Q_SIGNALS:
    /// The user pressed the icon itself, and the desktop told of it: many open the menu instead.
    void pressed();

private:
    void updateIcon();

    const Appearance *const m_appearance;
    QSystemTrayIcon m_icon;
};

} // namespace tarnwik
