#include "ui/app/SingleInstance.h"

#include "support/EventLoop.h"
#include "support/SessionBus.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QSignalSpy>

#include <atomic>
#include <thread>

namespace tarnwik {

namespace {

using test::spinUntil;
using Start = SingleInstance::Start;

const QString name = QStringLiteral("example.tarnwik.client");

class SingleInstanceTest : public testing::Test
{
protected:
    /// Another process's start: it waits, while this thread's event loop answers.
    Start startElsewhere(const QString &wanted, const QVariantMap &platformData = {})
    {
        std::atomic<bool> hasEnded = false;
        Start result = Start::Unanswered;
        const QDBusConnection bus = m_bus.connection();
        std::thread other([&] {
            SingleInstance instance(bus, wanted);
            result = instance.start(platformData);
            hasEnded = true;
        });
        spinUntil([&] { return hasEnded.load(); });
        other.join();
        return result;
    }

    test::SessionBus m_bus;
};

TEST_F(SingleInstanceTest, aSecondStartRaisesTheFirstOne)
{
    SingleInstance first(m_bus.connection(), name);
    QSignalSpy activated(&first, &SingleInstance::activated);
    EXPECT_EQ(first.start({}), Start::First);
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("token")}};
    EXPECT_EQ(startElsewhere(name, data), Start::Raised);
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.first().first().toMap(), data);
}

TEST_F(SingleInstanceTest, theDemoIsAProgramOfItsOwn)
{
    SingleInstance first(m_bus.connection(), name);
    QSignalSpy activated(&first, &SingleInstance::activated);
    EXPECT_EQ(first.start({}), Start::First);
    EXPECT_EQ(startElsewhere(name + QStringLiteral(".demo")), Start::First);
    EXPECT_TRUE(activated.isEmpty());
}

TEST_F(SingleInstanceTest, withoutABusItJustRuns)
{
    SingleInstance instance(QDBusConnection(QStringLiteral("no such connection")), name);
    EXPECT_EQ(instance.start({}), Start::First);
}

TEST_F(SingleInstanceTest, anotherProgramUnderTheNameThatDoesNotAnswerIsTold)
{
    QDBusConnection stranger = m_bus.connection();
    ASSERT_TRUE(stranger.registerService(name));
    SingleInstance instance(m_bus.connection(), name);
    EXPECT_EQ(instance.start({}), Start::Unanswered);
}

TEST_F(SingleInstanceTest, theDesktopStartsItThroughTheApplicationInterface)
{
    SingleInstance first(m_bus.connection(), name);
    QSignalSpy activated(&first, &SingleInstance::activated);
    ASSERT_EQ(first.start({}), Start::First);
    const QDBusConnection desktop = m_bus.connection();
    for (const QString &member :
         {QStringLiteral("Activate"), QStringLiteral("Open"), QStringLiteral("ActivateAction")}) {
        auto call = QDBusMessage::createMethodCall(name, QStringLiteral("/example/tarnwik/client"),
                                                   QStringLiteral("org.freedesktop.Application"), member);
        if (member == QStringLiteral("Open"))
            call << QStringList();
        if (member == QStringLiteral("ActivateAction"))
            call << QStringLiteral("action") << QVariantList();
        call << QVariantMap();
        activated.clear();
        desktop.asyncCall(call);
        EXPECT_TRUE(spinUntil([&] { return activated.size() == 1; })) << member.toStdString();
    }
}

TEST(SingleInstancePath, followsTheName)
{
    EXPECT_EQ(SingleInstance::objectPath(QStringLiteral("example.tarnwik.a-b")),
              QStringLiteral("/example/tarnwik/a_b"));
}

} // namespace
} // namespace tarnwik
