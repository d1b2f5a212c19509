#pragma once

#include <QColor>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace tarnwik {

/// What the user has set for the look of all programs of the desktop, as far as it was told.
struct AppearanceSettings
{
    /// Dark or light; absent when the user has no preference, or none is known.
    std::optional<bool> isDark;
    std::optional<QColor> accentColor;
    /// How much larger than usual text is to be.
    double textScale = 1;
    bool reducesMotion = false;

    bool operator==(const AppearanceSettings &) const = default;

    /// The portal's names for the groups that take() knows settings of.
    static QStringList spaces();

    /// Takes one setting of the desktop portal. What is unknown, or makes no sense, changes nothing or means the
    /// default.
    void take(const QString &space, const QString &key, const QVariant &value);
};

/// The desktop's look, for the theme to follow. Lives on the main thread.
class Appearance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(QVariant accentColor READ accentColor NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)

public:
    /// Light or dark by the application's palette, until settings come.
    explicit Appearance(QObject *parent = nullptr);

    bool isDark() const { return m_settings.isDark.value_or(m_isPaletteDark); }

    /// A colour, or undefined when the user chose none.
    QVariant accentColor() const;
    double textScale() const { return m_settings.textScale; }
    bool reducesMotion() const { return m_settings.reducesMotion; }

    const AppearanceSettings &settings() const { return m_settings; }
    void setSettings(const AppearanceSettings &settings);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void changed();

private:
    AppearanceSettings m_settings;
    bool m_isPaletteDark;
};

} // namespace tarnwik
