#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QVariantMap>

namespace tarnwik::test {

using SettingSpaces = QMap<QString, QVariantMap>;

/// The desktop portal's settings, as the test sets them.
class TestPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit TestPortal(QDBusConnection bus);

    /// A setting that stands before anybody asks.
    void set(const QString &space, const QString &key, const QVariant &value) { m_spaces[space][key] = value; }

    /// A setting that the user changes now.
    void change(const QString &space, const QString &key, const QVariant &value);

    /// A colour as the portal writes it.
    static QVariant color(double red, double green, double blue);

    /// Named as on the bus.
    Q_SLOT tarnwik::test::SettingSpaces ReadAll(const QStringList &spaces);

Q_SIGNALS:
    void SettingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    SettingSpaces m_spaces;
};

} // namespace tarnwik::test
