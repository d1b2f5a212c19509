#include "core/AppRuntime.h"
#include "core/AppSection.h"
#include "core/Platform.h"
#include "support/TestPlatform.h"

#include <QSet>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

QString text(const char16_t *utf16)
{
    return QString::fromUtf16(utf16);
}

class AppRuntimeTest : public testing::Test
{
protected:
    void set(const char16_t *key, const QVariant &value)
    {
        m_platform.informationDictionary->objects.insert(text(key), value);
    }
    void setServer(const QVariant &value) { set(u"TarnwikDefaultServerURL", value); }

    TestPlatform m_platform;
    const QString m_builtInServer = QStringLiteral("https://api.tarnwik.example");
};

} // namespace

TEST_F(AppRuntimeTest, fallsBackToWhatIsBuiltIn)
{
    EXPECT_EQ(AppRuntime::defaultServerURLString(), m_builtInServer);
    EXPECT_EQ(AppRuntime::defaultServerURL().absoluteString(), m_builtInServer);
    EXPECT_EQ(AppRuntime::tunnelBundleIdentifier(), text(u"example.tarnwik.client.tunnel"));
    EXPECT_EQ(AppRuntime::keychainAccessGroup(), std::nullopt);
}

TEST_F(AppRuntimeTest, readsTheDictionaryAtEveryAccess)
{
    setServer(text(u"https://one.example"));
    EXPECT_EQ(AppRuntime::defaultServerURLString(), text(u"https://one.example"));
    setServer(text(u"https://two.example"));
    set(u"TarnwikTunnelBundleIdentifier", text(u"org.example.tunnel"));
    set(u"TarnwikKeychainAccessGroup", text(u"TEAM.group"));
    EXPECT_EQ(AppRuntime::defaultServerURLString(), text(u"https://two.example"));
    EXPECT_EQ(AppRuntime::tunnelBundleIdentifier(), text(u"org.example.tunnel"));
    EXPECT_EQ(AppRuntime::keychainAccessGroup(), text(u"TEAM.group"));
}

TEST_F(AppRuntimeTest, trimsWhiteSpaceAndLineBreaks)
{
    setServer(text(u" \t\u00a0\u200b\u3000https://h.example \r\n\u2028"));
    EXPECT_EQ(AppRuntime::defaultServerURLString(), text(u"https://h.example"));
}

TEST_F(AppRuntimeTest, doesNotTrimWhatIsNoWhiteSpace)
{
    setServer(text(u"\ufeffx\u200d"));
    EXPECT_EQ(AppRuntime::defaultServerURLString(), text(u"\ufeffx\u200d"));
}

TEST_F(AppRuntimeTest, ignoresUnexpandedBuildSettings)
{
    for (const QString &value : {text(u"$(TARNWIK_SERVER)"), text(u"https://$(HOST)/"), text(u"x$(")}) {
        setServer(value);
        EXPECT_EQ(AppRuntime::defaultServerURLString(), m_builtInServer) << value.toStdString();
    }
}

TEST_F(AppRuntimeTest, keepsDollarSignsAndParenthesesThatStandAlone)
{
    for (const QString &value : {text(u"https://h/$x"), text(u"https://h/(x)"), text(u"https://h/$ (x)")}) {
        setServer(value);
        EXPECT_EQ(AppRuntime::defaultServerURLString(), value);
    }
}

TEST_F(AppRuntimeTest, ignoresBlankValuesAndValuesThatAreNoStrings)
{
    for (const QVariant &value : {QVariant(QString()), QVariant(text(u" \n")), QVariant(5), QVariant(5.5),
                                  QVariant(true), QVariant(qint64(7)), QVariant()}) {
        setServer(value);
        EXPECT_EQ(AppRuntime::defaultServerURLString(), m_builtInServer);
        set(u"TarnwikKeychainAccessGroup", value);
        EXPECT_EQ(AppRuntime::keychainAccessGroup(), std::nullopt);
    }
}

TEST_F(AppRuntimeTest, givesTheBuiltInURLWhenTheTextIsNone)
{
    setServer(text(u"https://exa mple.com"));
    EXPECT_EQ(AppRuntime::defaultServerURLString(), text(u"https://exa mple.com"));
    EXPECT_EQ(AppRuntime::defaultServerURL().absoluteString(), m_builtInServer);
}

TEST_F(AppRuntimeTest, checksNeitherSchemeNorHostOfTheURL)
{
    setServer(text(u"api.example.com"));
    EXPECT_EQ(AppRuntime::defaultServerURL().absoluteString(), text(u"api.example.com"));
}

TEST(Platform, isMacOSInThisClient)
{
    EXPECT_EQ(Platform::current(), Platform(Platform::macos));
    EXPECT_EQ(Platform::current().displayName(), text(u"macOS"));
    EXPECT_EQ(Platform::current().apiValue(), text(u"macos"));
    EXPECT_EQ(Platform::current().defaultDeviceName(), text(u"macOS device"));
}

TEST(Platform, knowsTheOtherOne)
{
    const Platform ios = Platform::ios;
    EXPECT_EQ(ios.displayName(), text(u"iOS"));
    EXPECT_EQ(ios.apiValue(), text(u"ios"));
    EXPECT_EQ(ios.defaultDeviceName(), text(u"iOS device"));
    EXPECT_EQ(QSet<Platform>({ios, Platform::macos, Platform::ios}).size(), 2);
}

TEST(AppSection, hasThreeCasesInTheSidebarsOrder)
{
    const QList<QStringList> expected{
        {text(u"connect"), text(u"Connect"), text(u"network")},
        {text(u"account"), text(u"Account"), text(u"person.crop.circle")},
        {text(u"settings"), text(u"Settings"), text(u"gearshape")},
    };
    QList<QStringList> sections;
    for (const AppSection section : AppSection::allCases) {
        EXPECT_EQ(section.id(), section.rawValue());
        EXPECT_EQ(AppSection::fromRawValue(section.rawValue()), section);
        sections << QStringList{section.rawValue(), section.title(), section.systemImage()};
    }
    EXPECT_EQ(sections, expected);
    EXPECT_EQ(QSet<AppSection>({AppSection::connect, AppSection::account, AppSection::connect}).size(), 2);
}

TEST(AppSection, isMadeOfNoOtherRawValue)
{
    for (const QString &other : {text(u""), text(u"Connect"), text(u"connect "), text(u"network")})
        EXPECT_EQ(AppSection::fromRawValue(other), std::nullopt);
}

} // namespace tarnwik::test
