#include "ui/app/TarnwikMenuBarLabel.h"

#include "platform/BundleIdentifier.h"

#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QSvgRenderer>

#include <array>

namespace tarnwik {

namespace {

const QString ownDrawing = QStringLiteral(":/tarnwik/TarnwikMenuBarIcon.svg");

/// The sizes that trays ask for, at one and two dots a point.
constexpr std::array trayIconSizes{16, 17, 22, 24, 32, 34, 44, 48, 64};

/// Our drawing in one colour, for desktops that do not find the installed icon and so cannot tint it.
QIcon drawnIcon(const QColor &color)
{
    QSvgRenderer renderer(ownDrawing);
    QIcon icon;
    for (const int size : trayIconSizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), color);
        painter.end();
        icon.addPixmap(pixmap);
    }
    icon.setIsMask(true);
    return icon;
}

} // namespace

TarnwikMenuBarLabel::TarnwikMenuBarLabel(QMenu *menu, const Appearance *appearance)
    : m_appearance(appearance)
{
    updateIcon();
    m_icon.setToolTip(QStringLiteral("Tarnwik"));
    m_icon.setContextMenu(menu);
    QObject::connect(appearance, &Appearance::changed, this, &TarnwikMenuBarLabel::updateIcon);
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            Q_EMIT pressed();
    });
    m_icon.show();
}

void TarnwikMenuBarLabel::updateIcon()
{
    const QString installedName = bundleIdentifier() + QStringLiteral("-symbolic");
    m_icon.setIcon(QIcon::hasThemeIcon(installedName) ? QIcon::fromTheme(installedName)
                                                      : drawnIcon(m_appearance->isDark() ? Qt::white : Qt::black));
}

} // namespace tarnwik
