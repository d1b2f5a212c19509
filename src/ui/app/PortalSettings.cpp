#include "ui/app/PortalSettings.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QMap>

namespace tarnwik {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

using SettingSpaces = QMap<QString, QVariantMap>;

} // namespace

PortalSettings::PortalSettings(QDBusConnection bus, Appearance *appearance, QObject *parent)
    : QObject(parent)
    , m_appearance(appearance)
{
    qDBusRegisterMetaType<SettingSpaces>();
    // Qt 6.4 connects no slot that takes this type before the program has registered it.
    qRegisterMetaType<QDBusVariant>();
    // Without the sender's name: with it, Qt would wait here for the bus to tell who that is. A signal of this
    // interface and path from somebody else could do no more than change colours.
    bus.connect({}, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(takeChange(QString, QString, QDBusVariant)));
    auto question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    question << AppearanceSettings::spaces();
    m_answer = bus.asyncCall(question);
    const auto *watcher = new QDBusPendingCallWatcher(*m_answer, this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        takeWhatHasCome();
        finished->deleteLater();
    });
}

void PortalSettings::takeWhatHasCome()
{
    if (!m_answer || !m_answer->isFinished())
        return;
    take(*m_answer);
    m_answer.reset();
}

void PortalSettings::take(const QDBusPendingCall &answer)
{
    const QDBusPendingReply<SettingSpaces> reply = answer;
    if (reply.isError())
        return;
    AppearanceSettings settings = m_appearance->settings();
    const SettingSpaces spaces = reply.value();
    for (auto space = spaces.begin(); space != spaces.end(); ++space) {
        for (auto entry = space->begin(); entry != space->end(); ++entry)
            settings.take(space.key(), entry.key(), entry.value());
    }
    m_appearance->setSettings(settings);
}

void PortalSettings::takeChange(const QString &space, const QString &key, const QDBusVariant &value)
{
    AppearanceSettings settings = m_appearance->settings();
    settings.take(space, key, value.variant());
    m_appearance->setSettings(settings);
}

} // namespace tarnwik
