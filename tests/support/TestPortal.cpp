#include "support/TestPortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>

namespace tarnwik::test {

namespace {

struct PortalColor
{
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalColor &color)
{
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalColor &color)
{
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt wants this form.
}

} // namespace

TestPortal::TestPortal(QDBusConnection bus)
{
    qDBusRegisterMetaType<SettingSpaces>();
    qDBusRegisterMetaType<PortalColor>();
    bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void TestPortal::change(const QString &space, const QString &key, const QVariant &value)
{
    set(space, key, value);
    Q_EMIT SettingChanged(space, key, QDBusVariant(value));
}

QVariant TestPortal::color(double red, double green, double blue)
{
    return QVariant::fromValue(PortalColor{red, green, blue});
}

SettingSpaces TestPortal::ReadAll(const QStringList &spaces)
{
    SettingSpaces wanted;
    for (auto space = m_spaces.begin(); space != m_spaces.end(); ++space) {
        if (spaces.contains(space.key()))
            wanted.insert(space.key(), *space);
    }
    return wanted;
}

} // namespace tarnwik::test
