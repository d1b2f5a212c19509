#include "platform/macos/MacUserDefaults.h"

#include "MacAdapterStandIns.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

class MacUserDefaultsTest : public testing::Test
{
protected:
    MacUserDefaultsTest() { MacStandIns::current() = {}; }

    const QString m_key = QStringLiteral("TarnwikAuthToken");
    MacUserDefaults m_defaults;
};

TEST_F(MacUserDefaultsTest, keepsAStringUntilItIsRemoved)
{
    EXPECT_EQ(m_defaults.string(m_key), std::nullopt);
    m_defaults.setString(QStringLiteral("tøken"), m_key);
    EXPECT_EQ(m_defaults.string(m_key), QStringLiteral("tøken"));
    m_defaults.removeObject(m_key);
    EXPECT_EQ(m_defaults.string(m_key), std::nullopt);
}

TEST_F(MacUserDefaultsTest, anEmptyStringIsNotAMissingOne)
{
    m_defaults.setString(QString(), m_key);
    EXPECT_EQ(m_defaults.string(m_key), QString());
}

TEST_F(MacUserDefaultsTest, saysSoWhenTheyCannotBeWritten)
{
    m_defaults.setString(QStringLiteral("old"), m_key);
    MacStandIns::current().isDiskWritable = false;
    EXPECT_THROW(m_defaults.setString(QStringLiteral("new"), m_key), UserDefaultsError);
    EXPECT_THROW(m_defaults.removeObject(m_key), UserDefaultsError);
    EXPECT_EQ(m_defaults.string(m_key), QStringLiteral("old"));
}

} // namespace

} // namespace tarnwik::test
