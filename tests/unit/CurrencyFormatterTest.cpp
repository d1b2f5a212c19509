#include "FormatterFixture.h"

#include "ui/CurrencyFormatter.h"

#include <QRegularExpression>

#include <limits>

namespace tarnwik::test {

namespace {

/// 999, 0, -999 and 123,456,789 cents.
struct Prices
{
    const char *locale;
    const char16_t *price;
    const char16_t *nothing;
    const char16_t *debt;
    const char16_t *fortune;
};

void PrintTo(const Prices &prices, std::ostream *stream)
{
    *stream << prices.locale;
}

// The wording is ICU's and differs in details from one release to another; this one is of release 72.
const Prices everywhere[] = {
    {"en_US", u"$9.99", u"$0.00", u"-$9.99", u"$1,234,567.89"},
    {"de_DE", u"9,99\u00A0$", u"0,00\u00A0$", u"-9,99\u00A0$", u"1.234.567,89\u00A0$"},
    {"en_GB", u"US$9.99", u"US$0.00", u"-US$9.99", u"US$1,234,567.89"},
    {"ja_JP", u"$9.99", u"$0.00", u"-$9.99", u"$1,234,567.89"},
    {"fr_FR", u"9,99\u00A0$US", u"0,00\u00A0$US", u"-9,99\u00A0$US", u"1\u202F234\u202F567,89\u00A0$US"},
    {"es_ES", u"9,99\u00A0US$", u"0,00\u00A0US$", u"-9,99\u00A0US$", u"1.234.567,89\u00A0US$"},
    {"pt_BR", u"US$\u00A09,99", u"US$\u00A00,00", u"-US$\u00A09,99", u"US$\u00A01.234.567,89"},
    {"zh_CN", u"US$9.99", u"US$0.00", u"-US$9.99", u"US$1,234,567.89"},
    {"en_CA", u"US$9.99", u"US$0.00", u"-US$9.99", u"US$1,234,567.89"},
    {"en_AU", u"USD\u00A09.99", u"USD\u00A00.00", u"-USD\u00A09.99", u"USD\u00A01,234,567.89"},
    {"de_CH", u"$\u00A09.99", u"$\u00A00.00", u"$-9.99", u"$\u00A01\u2019234\u2019567.89"},
    {"ru_RU", u"9,99\u00A0$", u"0,00\u00A0$", u"-9,99\u00A0$", u"1\u00A0234\u00A0567,89\u00A0$"},
    {"it_IT", u"9,99\u00A0USD", u"0,00\u00A0USD", u"-9,99\u00A0USD", u"1.234.567,89\u00A0USD"},
    {"sv_SE", u"9,99\u00A0US$", u"0,00\u00A0US$", u"\u22129,99\u00A0US$", u"1\u00A0234\u00A0567,89\u00A0US$"},
};

class Everywhere : public testing::TestWithParam<Prices>
{
};

} // namespace

TEST_P(Everywhere, writesUSDollarsInTheMannerOfTheLocale)
{
    const UserLocale locale(GetParam().locale);
    EXPECT_EQ(CurrencyFormatter::cents(999), text(GetParam().price));
    EXPECT_EQ(CurrencyFormatter::cents(0), text(GetParam().nothing));
    EXPECT_EQ(CurrencyFormatter::cents(-999), text(GetParam().debt));
    EXPECT_EQ(CurrencyFormatter::cents(123'456'789), text(GetParam().fortune));
}
INSTANTIATE_TEST_SUITE_P(CurrencyFormatter, Everywhere, testing::ValuesIn(everywhere),
                         [](const auto &info) { return std::string(info.param.locale); });

TEST(CurrencyFormatter, alwaysWritesTwoFractionDigits)
{
    const UserLocale locale("en_US");
    EXPECT_EQ(CurrencyFormatter::cents(1), text(u"$0.01"));
    EXPECT_EQ(CurrencyFormatter::cents(-1), text(u"-$0.01"));
    EXPECT_EQ(CurrencyFormatter::cents(10), text(u"$0.10"));
    EXPECT_EQ(CurrencyFormatter::cents(100), text(u"$1.00"));
    EXPECT_EQ(CurrencyFormatter::cents(99'999), text(u"$999.99"));
    EXPECT_EQ(CurrencyFormatter::cents(100'000), text(u"$1,000.00"));
}

TEST(CurrencyFormatter, isAsExactAsADouble)
{
    const UserLocale locale("en_US");
    EXPECT_EQ(CurrencyFormatter::cents(999'999'999'999'999), text(u"$9,999,999,999,999.99"));
    // From here on the digits are the fewest that make the same double.
    EXPECT_EQ(CurrencyFormatter::cents(9'007'199'254'740'991), text(u"$90,071,992,547,409.90"));
    EXPECT_EQ(CurrencyFormatter::cents(std::numeric_limits<qint64>::max()), text(u"$92,233,720,368,547,760.00"));
    EXPECT_EQ(CurrencyFormatter::cents(std::numeric_limits<qint64>::min()), text(u"-$92,233,720,368,547,760.00"));
}

TEST(CurrencyFormatter, readsTheLocaleAtEveryCall)
{
    const UserLocale english("en_US");
    EXPECT_EQ(CurrencyFormatter::cents(999), text(u"$9.99"));
    {
        const UserLocale german("de_DE");
        EXPECT_EQ(CurrencyFormatter::cents(999), text(u"9,99\u00A0$"));
    }
    EXPECT_EQ(CurrencyFormatter::cents(999), text(u"$9.99"));
}

TEST(CurrencyFormatter, takesTheCLocaleForAmericanEnglish)
{
    const UserLocale locale(QLocale::c());
    EXPECT_EQ(CurrencyFormatter::cents(-123'456'789), text(u"-$1,234,567.89"));
}

TEST(CurrencyFormatter, keepsTheScriptOfTheLocale)
{
    {
        const UserLocale cyrillic(QLocale(QLocale::Bosnian, QLocale::CyrillicScript, QLocale::BosniaAndHerzegovina));
        EXPECT_EQ(CurrencyFormatter::cents(999), text(u"9,99\u00A0US$"));
    }
    const UserLocale latin(QLocale(QLocale::Bosnian, QLocale::LatinScript, QLocale::BosniaAndHerzegovina));
    EXPECT_EQ(CurrencyFormatter::cents(999), text(u"9,99\u00A0USD"));
}

TEST(CurrencyFormatter, writesDollarsInALocaleThatICUDoesNotKnow)
{
    const UserLocale locale("wa_BE");
    ASSERT_EQ(QLocale().language(), QLocale::Walloon);
    const QString price = CurrencyFormatter::cents(999);
    EXPECT_TRUE(price.contains(QLatin1Char('$'))) << price.toStdString();
    EXPECT_TRUE(price.contains(QRegularExpression(QStringLiteral("9[.,]99")))) << price.toStdString();
}

TEST(CurrencyFormatter, saysNothingIsDueWhenICUFails)
{
    const UserLocale locale(FailingICU::locale);
    for (const auto step : {FailingICU::Step::Currency, FailingICU::Step::Format}) {
        const FailingICU icu(step);
        EXPECT_EQ(CurrencyFormatter::cents(999), text(u"$0.00"));
    }
    EXPECT_EQ(CurrencyFormatter::cents(999), text(u"$\u00A09,99"));
}

} // namespace tarnwik::test
