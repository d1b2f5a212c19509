#include "FormatterFixture.h"

#include "ui/ByteFormatter.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace tarnwik::test {

namespace {

constexpr qint64 greatest = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

struct Amount
{
    qint64 bytes;
    const char16_t *expected;
};

void PrintTo(const Amount &amount, std::ostream *stream)
{
    *stream << amount.bytes;
}

const Amount inEnglish[] = {
    {0, u"Zero KB"},
    {1, u"0 KB"},
    {511, u"0 KB"},
    {512, u"0 KB"},
    {513, u"1 KB"},
    {1'023, u"1 KB"},
    {1'024, u"1 KB"},
    {1'535, u"1 KB"},
    {1'536, u"2 KB"},
    {1'537, u"2 KB"},
    {2'560, u"2 KB"},
    {10'240, u"10 KB"},
    {11'999, u"12 KB"},
    {900'000, u"879 KB"},
    {1'047'551, u"1,023 KB"},
    {1'048'063, u"1,023 KB"},
    {1'048'064, u"1,024 KB"},
    {1'048'575, u"1,024 KB"},
    {1'048'576, u"1 MB"},
    {1'101'004, u"1 MB"},
    {1'310'720, u"1.2 MB"},
    {1'310'721, u"1.3 MB"},
    {1'572'864, u"1.5 MB"},
    {1'835'008, u"1.8 MB"},
    {10'485'760, u"10 MB"},
    {12'345'678, u"11.8 MB"},
    {123'456'789, u"117.7 MB"},
    {1'073'689'394, u"1,023.9 MB"},
    {1'073'689'395, u"1,023.9 MB"},
    {1'073'741'823, u"1,024 MB"},
    {1'073'741'824, u"1 GB"},
    {1'079'110'533, u"1 GB"},
    {1'207'959'552, u"1.12 GB"},
    {1'234'567'898, u"1.15 GB"},
    {5'368'709'120, u"5 GB"},
    {12'345'678'987, u"11.5 GB"},
    {1'099'511'627'776, u"1,024 GB"},
    {1'234'567'890'123, u"1,149.78 GB"},
    {1'125'899'906'842'624, u"1,048,576 GB"},
    {greatest, u"8,589,934,592 GB"},
    {-1, u"-0 KB"},
    {-512, u"-0 KB"},
    {-1'024, u"-1 KB"},
    {-1'536, u"-2 KB"},
    {-1'048'575, u"-1,024 KB"},
    {-1'048'576, u"-1 MB"},
    {-1'073'741'823, u"-1,024 MB"},
    {-5'368'709'120, u"-5 GB"},
    {least, u"-8,589,934,592 GB"},
};

struct LocaleAmount
{
    const char *locale;
    qint64 bytes;
    const char16_t *expected;
};

void PrintTo(const LocaleAmount &amount, std::ostream *stream)
{
    *stream << amount.locale << ' ' << amount.bytes;
}

const LocaleAmount inOtherLanguages[] = {
    {"de_DE", 0, u"Zero KB"},
    {"de_DE", 1'048'575, u"1.024 KB"},
    {"de_DE", 1'572'864, u"1,5 MB"},
    {"de_DE", 1'234'567'890'123, u"1.149,78 GB"},
    {"de_DE", greatest, u"8.589.934.592 GB"},
    {"de_DE", -512, u"-0 KB"},
    {"de_DE", -1'048'576, u"-1 MB"},
    {"ja_JP", 0, u"Zero KB"},
    {"ja_JP", 1'048'575, u"1,024 KB"},
    {"ja_JP", 1'234'567'890'123, u"1,149.78 GB"},
    {"ja_JP", -1'572'864, u"-1.5 MB"},
    {"fr_FR", 0, u"Zero KB"},
    {"fr_FR", 1'048'575, u"1\u202F024 KB"},
    {"fr_FR", 1'572'864, u"1,5 MB"},
    {"fr_FR", 1'234'567'890'123, u"1\u202F149,78 GB"},
    {"fr_FR", least, u"-8\u202F589\u202F934\u202F592 GB"},
    {"ru_RU", 1'234'567'890'123, u"1\u00A0149,78 GB"},
    {"de_CH", 1'234'567'890'123, u"1\u2019149.78 GB"},
    {"sv_SE", -1, u"\u22120 KB"},
    {"sv_SE", -1'234'567'890'123, u"\u22121\u00A0149,78 GB"},
    {"en_IN", 1'125'899'906'842'624, u"10,48,576 GB"},
    {"ar_EG", 1'572'864, u"\u0661\u066B\u0665 MB"},
};

class InEnglish : public testing::TestWithParam<Amount>
{
};
class InOtherLanguages : public testing::TestWithParam<LocaleAmount>
{
};

} // namespace

TEST_P(InEnglish, takesTheUnitOfTheUnroundedMagnitude)
{
    const UserLocale locale("en_US");
    EXPECT_EQ(ByteFormatter::string(GetParam().bytes), text(GetParam().expected));
}
INSTANTIATE_TEST_SUITE_P(ByteFormatter, InEnglish, testing::ValuesIn(inEnglish));

TEST_P(InOtherLanguages, writesTheNumberInTheirManner)
{
    const UserLocale locale(GetParam().locale);
    EXPECT_EQ(ByteFormatter::string(GetParam().bytes), text(GetParam().expected));
}
INSTANTIATE_TEST_SUITE_P(ByteFormatter, InOtherLanguages, testing::ValuesIn(inOtherLanguages));

TEST(ByteFormatter, readsTheLocaleAtEveryCall)
{
    const UserLocale english("en_US");
    EXPECT_EQ(ByteFormatter::string(1'572'864), text(u"1.5 MB"));
    {
        const UserLocale german("de_DE");
        EXPECT_EQ(ByteFormatter::string(1'572'864), text(u"1,5 MB"));
    }
    EXPECT_EQ(ByteFormatter::string(1'572'864), text(u"1.5 MB"));
}

TEST(ByteFormatter, takesTheCLocaleForAmericanEnglish)
{
    const UserLocale locale(QLocale::c());
    EXPECT_EQ(ByteFormatter::string(1'048'575), text(u"1,024 KB"));
    EXPECT_EQ(ByteFormatter::string(0), text(u"Zero KB"));
}

TEST(ByteFormatter, writesANumberInALocaleThatICUDoesNotKnow)
{
    const UserLocale locale("wa_BE");
    ASSERT_EQ(QLocale().language(), QLocale::Walloon);
    EXPECT_EQ(ByteFormatter::string(10'485'760), text(u"10 MB"));
}

TEST(ByteFormatter, showsTheAmountEvenIfICUFails)
{
    const UserLocale locale(FailingICU::locale);
    const FailingICU icu(FailingICU::Step::Format);
    EXPECT_EQ(ByteFormatter::string(1'572'864), text(u"1.5 MB"));
    EXPECT_EQ(ByteFormatter::string(-1'572'864), text(u"-1.5 MB"));
}

// The program is run anew, since the environment's locale is read only once.
TEST(ByteFormatterDeathTest, takesTheLocaleOfTheEnvironment)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const QByteArray former = qgetenv("LC_ALL");
    qputenv("LC_ALL", "de_DE.UTF-8");
    EXPECT_EXIT(
        {
            std::fprintf(stderr, "[%s]", qPrintable(ByteFormatter::string(1'572'864)));
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "\\[1,5 MB\\]");
    qputenv("LC_ALL", former);
}

} // namespace tarnwik::test
