#include "ui/app/Appearance.h"

#include "support/EventLoop.h"
#include "support/SessionBus.h"
#include "support/TestPortal.h"
#include "ui/app/PortalSettings.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QThread>

#include <cmath>

namespace tarnwik {

namespace {

using test::spinUntil;
using test::TestPortal;

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString interfaceSpace = QStringLiteral("org.gnome.desktop.interface");

AppearanceSettings taken(const QString &space, const char *key, const QVariant &value)
{
    AppearanceSettings settings;
    settings.take(space, QString::fromLatin1(key), value);
    return settings;
}

TEST(AppearanceSettingsTest, theColourSchemeIsDarkLightOrNeither)
{
    EXPECT_EQ(taken(appearanceSpace, "color-scheme", 0U).isDark, std::nullopt);
    EXPECT_EQ(taken(appearanceSpace, "color-scheme", 1U).isDark, true);
    EXPECT_EQ(taken(appearanceSpace, "color-scheme", 2U).isDark, false);
    EXPECT_EQ(taken(appearanceSpace, "color-scheme", 7U).isDark, std::nullopt);
    EXPECT_EQ(taken(appearanceSpace, "color-scheme", QStringLiteral("x")).isDark, std::nullopt);
}

TEST(AppearanceSettingsTest, theTextScaleStaysUsable)
{
    EXPECT_EQ(taken(interfaceSpace, "text-scaling-factor", 1.25).textScale, 1.25);
    EXPECT_EQ(taken(interfaceSpace, "text-scaling-factor", 100.0).textScale, 3);
    EXPECT_EQ(taken(interfaceSpace, "text-scaling-factor", 0.01).textScale, 0.5);
    for (const QVariant &nonsense : {QVariant(0.0), QVariant(-1.0), QVariant(std::nan("")), QVariant(HUGE_VAL),
                                     QVariant(QStringLiteral("large")), QVariant()})
        EXPECT_EQ(taken(interfaceSpace, "text-scaling-factor", nonsense).textScale, 1);
}

TEST(AppearanceSettingsTest, motionIsReducedWhereAnimationsAreOff)
{
    EXPECT_TRUE(taken(interfaceSpace, "enable-animations", false).reducesMotion);
    EXPECT_FALSE(taken(interfaceSpace, "enable-animations", true).reducesMotion);
    EXPECT_FALSE(taken(interfaceSpace, "enable-animations", QVariant()).reducesMotion);
}

TEST(AppearanceSettingsTest, otherSettingsChangeNothing)
{
    EXPECT_EQ(taken(interfaceSpace, "color-scheme", QStringLiteral("prefer-dark")), AppearanceSettings());
    EXPECT_EQ(taken(appearanceSpace, "text-scaling-factor", 2.0), AppearanceSettings());
    EXPECT_EQ(taken(QStringLiteral("org.kde.kdeglobals"), "color-scheme", 1U), AppearanceSettings());
}

TEST(AppearanceTest, isThePalettesUntilTheDesktopTells)
{
    const QPalette before = QGuiApplication::palette();
    Appearance appearance;
    EXPECT_FALSE(appearance.isDark());
    QSignalSpy changed(&appearance, &Appearance::changed);
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QGuiApplication::setPalette(dark);
    EXPECT_TRUE(spinUntil([&] { return appearance.isDark(); }));
    EXPECT_EQ(changed.size(), 1);

    AppearanceSettings light;
    light.isDark = false;
    appearance.setSettings(light);
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(changed.size(), 2);
    appearance.setSettings(light);
    EXPECT_EQ(changed.size(), 2);
    QGuiApplication::setPalette(before);
}

class PortalSettingsTest : public testing::Test
{
protected:
    test::SessionBus m_bus;
    Appearance m_appearance;
};

TEST_F(PortalSettingsTest, theDesktopsSettingsAreTaken)
{
    TestPortal portal(m_bus.connection());
    portal.set(appearanceSpace, QStringLiteral("color-scheme"), 1U);
    portal.set(appearanceSpace, QStringLiteral("accent-color"), TestPortal::color(1, 0.5, 0));
    portal.set(interfaceSpace, QStringLiteral("text-scaling-factor"), 1.5);
    portal.set(interfaceSpace, QStringLiteral("enable-animations"), false);
    const PortalSettings settings(m_bus.connection(), &m_appearance);
    QSignalSpy changed(&m_appearance, &Appearance::changed);
    ASSERT_TRUE(spinUntil([&] { return !changed.isEmpty(); }));
    EXPECT_TRUE(m_appearance.isDark());
    EXPECT_EQ(m_appearance.accentColor().value<QColor>().name(), QStringLiteral("#ff8000"));
    EXPECT_EQ(m_appearance.textScale(), 1.5);
    EXPECT_TRUE(m_appearance.reducesMotion());
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(PortalSettingsTest, changesAreFollowed)
{
    TestPortal portal(m_bus.connection());
    const PortalSettings settings(m_bus.connection(), &m_appearance);
    portal.change(appearanceSpace, QStringLiteral("color-scheme"), 1U);
    EXPECT_TRUE(spinUntil([&] { return m_appearance.isDark(); }));
    portal.change(appearanceSpace, QStringLiteral("accent-color"), TestPortal::color(0, 0, 1));
    EXPECT_TRUE(spinUntil([&] { return m_appearance.accentColor().value<QColor>() == QColor(Qt::blue); }));
    portal.change(appearanceSpace, QStringLiteral("accent-color"), TestPortal::color(-1, -1, -1));
    EXPECT_TRUE(spinUntil([&] { return !m_appearance.accentColor().isValid(); }));
    portal.change(appearanceSpace, QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(spinUntil([&] { return !m_appearance.isDark(); }));
    portal.change(interfaceSpace, QStringLiteral("text-scaling-factor"), 2.0);
    EXPECT_TRUE(spinUntil([&] { return m_appearance.textScale() == 2; }));
}

TEST_F(PortalSettingsTest, anAnswerThatHasComeIsTakenWithoutTheEventLoop)
{
    // The portal answers on a thread of its own, so that this one needs no event loop: that would take the answer too.
    QThread elsewhere;
    TestPortal portal(m_bus.connection());
    portal.set(appearanceSpace, QStringLiteral("color-scheme"), 1U);
    portal.moveToThread(&elsewhere);
    elsewhere.start();
    PortalSettings settings(m_bus.connection(), &m_appearance);
    const QDeadlineTimer deadline(test::patience);
    while (!m_appearance.isDark() && !deadline.hasExpired()) {
        QThread::msleep(1);
        settings.takeWhatHasCome();
    }
    EXPECT_TRUE(m_appearance.isDark());
    elsewhere.quit();
    elsewhere.wait();
}

TEST_F(PortalSettingsTest, withoutAPortalTheDefaultsStay)
{
    const PortalSettings settings(m_bus.connection(), &m_appearance);
    test::spinFor(std::chrono::milliseconds(100));
    EXPECT_EQ(m_appearance.settings(), AppearanceSettings());
}

TEST_F(PortalSettingsTest, withoutABusTheDefaultsStay)
{
    const PortalSettings settings(QDBusConnection(QStringLiteral("no such connection")), &m_appearance);
    test::spinFor(std::chrono::milliseconds(50));
    EXPECT_EQ(m_appearance.settings(), AppearanceSettings());
}

} // namespace
} // namespace tarnwik
