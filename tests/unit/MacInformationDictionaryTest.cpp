#include "platform/macos/MacInformationDictionary.h"

#include "MacAdapterStandIns.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

QVariant read(const mac::PropertyValue &value)
{
    MacStandIns::current() = {};
    MacStandIns::current().informationDictionary["key"] = value;
    return MacInformationDictionary().object(QStringLiteral("key"));
}

TEST(MacInformationDictionary, tellsTheKindsOfValuesApart)
{
    EXPECT_EQ(read(std::string("Žluť")), QVariant(QStringLiteral("Žluť")));
    EXPECT_EQ(read(true).metaType(), QMetaType::fromType<bool>());
    EXPECT_EQ(read(std::int64_t(1)).metaType(), QMetaType::fromType<qlonglong>());
    EXPECT_EQ(read(1.5).metaType(), QMetaType::fromType<double>());
    EXPECT_EQ(read(std::int64_t(5'000'000'000)).toLongLong(), 5'000'000'000);
}

TEST(MacInformationDictionary, holdsNothingUnderAKeyThatIsMissingOrOfAnotherKind)
{
    EXPECT_FALSE(read({}).isValid());
    EXPECT_FALSE(MacInformationDictionary().object(QStringLiteral("another")).isValid());
}

} // namespace

} // namespace tarnwik::test
