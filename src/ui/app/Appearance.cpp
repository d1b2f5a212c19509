#include "ui/app/Appearance.h"

#include <QDBusArgument>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace tarnwik {

namespace {

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString interfaceSpace = QStringLiteral("org.gnome.desktop.interface");

/// The desktops' own range; beyond it a window cannot be used.
constexpr double smallestTextScale = 0.5;
constexpr double largestTextScale = 3;

enum class ColorScheme : uint {
    NoPreference,
    Dark,
    Light,
};

bool isPaletteDark()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

std::optional<bool> isDark(const QVariant &value)
{
    switch (static_cast<ColorScheme>(value.toUInt())) {
    case ColorScheme::Dark:
        return true;
    case ColorScheme::Light:
        return false;
    case ColorScheme::NoPreference:
        break;
    }
    return {};
}

/// Red, green and blue from 0 to 1. The portal says with numbers beyond these that there is no colour.
std::optional<QColor> color(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)"))
        return {};
    double red = 0;
    double green = 0;
    double blue = 0;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    if (!isPart(red) || !isPart(green) || !isPart(blue))
        return {};
    return QColor::fromRgbF(float(red), float(green), float(blue));
}

double textScale(const QVariant &value)
{
    bool isNumber = false;
    const double scale = value.toDouble(&isNumber);
    return isNumber && std::isfinite(scale) && scale > 0 ? std::clamp(scale, smallestTextScale, largestTextScale) : 1;
}

} // namespace

QStringList AppearanceSettings::spaces()
{
    return {appearanceSpace, interfaceSpace};
}

void AppearanceSettings::take(const QString &space, const QString &key, const QVariant &value)
{
    if (space == appearanceSpace && key == QStringLiteral("color-scheme"))
        isDark = tarnwik::isDark(value);
    else if (space == appearanceSpace && key == QStringLiteral("accent-color"))
        accentColor = color(value);
    else if (space == interfaceSpace && key == QStringLiteral("text-scaling-factor"))
        textScale = tarnwik::textScale(value);
    else if (space == interfaceSpace && key == QStringLiteral("enable-animations"))
        reducesMotion = value.typeId() == QMetaType::Bool && !value.toBool();
}

Appearance::Appearance(QObject *parent)
    : QObject(parent)
    , m_isPaletteDark(isPaletteDark())
{
    qApp->installEventFilter(this);
}

QVariant Appearance::accentColor() const
{
    return m_settings.accentColor ? QVariant(*m_settings.accentColor) : QVariant();
}

void Appearance::setSettings(const AppearanceSettings &settings)
{
    if (settings == m_settings)
        return;
    m_settings = settings;
    Q_EMIT changed();
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && m_isPaletteDark != isPaletteDark()) {
        m_isPaletteDark = !m_isPaletteDark;
        if (!m_settings.isDark)
            Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarnwik
