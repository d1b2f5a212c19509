#include "ui/app/SingleInstance.h"

#include "ui/app/ApplicationInterface.h"

#include <QDBusError>
#include <QDBusMessage>

#include <utility>

namespace tarnwik {

namespace {

/// How long another process may take for one answer, in milliseconds.
constexpr int patience = 5000;

} // namespace

SingleInstance::SingleInstance(QDBusConnection bus, QString name, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_name(std::move(name))
{
}

QString SingleInstance::objectPath(const QString &name)
{
    return u'/' + QString(name).replace(u'.', u'/').replace(u'-', u'_');
}

SingleInstance::Start SingleInstance::start(const QVariantMap &platformData)
{
    if (!m_bus.isConnected())
        return Start::First;
    // The object first: whoever waits for the name calls as soon as it is there.
    new ApplicationInterface(this);
    m_bus.registerObject(objectPath(m_name), this, QDBusConnection::ExportAdaptors);
    // Twice, since the other one may end just now.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (m_bus.registerService(m_name))
            return Start::First;
        if (raiseOther(platformData) == Start::Raised)
            return Start::Raised;
    }
    return Start::Unanswered;
}

SingleInstance::Start SingleInstance::raiseOther(const QVariantMap &platformData)
{
    auto call = QDBusMessage::createMethodCall(m_name, objectPath(m_name), ApplicationInterface::name(),
                                               QStringLiteral("Activate"));
    call << platformData;
    call.setAutoStartService(false);
    const QDBusMessage answer = m_bus.call(call, QDBus::Block, patience);
    return answer.type() == QDBusMessage::ReplyMessage ? Start::Raised : Start::Unanswered;
}

} // namespace tarnwik
