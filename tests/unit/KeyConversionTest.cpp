#include "api/KeyConversion.h"
#include "api/Capitalized.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

struct Conversion
{
    const char16_t *input;
    const char16_t *output;
};

void PrintTo(const Conversion &conversion, std::ostream *stream)
{
    *stream << QString::fromUtf16(conversion.input).toStdString();
}

// Computed with an implementation of the platform's rules that passes the platform's own cases.
const Conversion fromSnakeCase[] = {
    {u"", u""},
    {u"_private", u"_private"},
    {u"URL_session", u"urlSession"},
    {u"_", u"_"},
    {u"trailing_", u"trailing_"},
    {u"o_ñandú", u"oÑandú"},
    {u"__", u"__"},
    {u"_Mixed_Case_", u"_mixedCase_"},
    {u"ÉTÉ_été", u"étéÉté"},
    {u"a", u"a"},
    {u"x_1", u"x1"},
    {u"straße_name", u"straßeName"},
    {u"A", u"A"},
    {u"x_1a", u"x1A"},
    {u"a_ß", u"aSs"},
    {u"id", u"id"},
    {u"x_2nd", u"x2Nd"},
    {u"a_ǆx", u"aǅx"},
    {u"user_id", u"userId"},
    {u"ipv4_address", u"ipv4Address"},
    {u"a_b-c", u"aB-C"},
    {u"USER_ID", u"userId"},
    {u"ipv_4_address", u"ipv4Address"},
    {u"a_b.c", u"aB.C"},
    {u"User_Id", u"userId"},
    {u"i_p", u"iP"},
    {u"a_o'neil", u"aO'neil"},
    {u"service_enabled", u"serviceEnabled"},
    {u"expires_at", u"expiresAt"},
    {u"key with_space", u"key withSpace"},
    {u"serviceEnabled", u"serviceEnabled"},
    {u"signed_transaction_JWS", u"signedTransactionJws"},
    {u"a_istanbul_İ", u"aIstanbulİ"},
    {u"one_two_URL", u"oneTwoUrl"},
    {u"signed_transaction_jws", u"signedTransactionJws"},
    {u"3d_model", u"3dModel"},
    {u"one_two_url", u"oneTwoUrl"},
    {u"signedTransactionJWS", u"signedTransactionJWS"},
    {u"_1_a", u"_1A"},
    {u"a__b", u"aB"},
    {u"signedTransaction_JWS", u"signedtransactionJws"},
    {u"-_-", u"--"},
    {u"a___b_", u"aB_"},
    {u"my_URL_property", u"myUrlProperty"},
    {u"🐧_🐟", u"🐧🐟"},
    {u"_a_b", u"_aB"},
    {u"url", u"url"},
    {u"__a_b__", u"__aB__"},
    {u"URL", u"URL"},
};

const Conversion toSnakeCase[] = {
    {u"", u""},
    {u"oneTwo3", u"one_two3"},
    {u"HTTPStatus404Code", u"h_ttp_status404_code"},
    {u"_", u"_"},
    {u"ipv4Address", u"ipv4_address"},
    {u"éTÉ", u"é_té"},
    {u"__", u"__"},
    {u"IPv4Address", u"i_pv4_address"},
    {u"straßeName", u"straße_name"},
    {u"a", u"a"},
    {u"a1B", u"a1_b"},
    {u"ñandúX", u"ñandú_x"},
    {u"A", u"a"},
    {u"aB", u"a_b"},
    {u"appAccountToken", u"app_account_token"},
    {u"AB", u"a_b"},
    {u"aBC", u"a_bc"},
    {u"originalTransactionID", u"original_transaction_id"},
    {u"id", u"id"},
    {u"aBCd", u"a_b_cd"},
    {u"lastSeenAt", u"last_seen_at"},
    {u"userId", u"user_id"},
    {u"_private", u"_private"},
    {u"A_B", u"a__b"},
    {u"userID", u"user_id"},
    {u"__privateKey__", u"__private_key__"},
    {u"aXb", u"a_xb"},
    {u"UserID", u"user_id"},
    {u"already_snake", u"already_snake"},
    {u"fooBarBAZ", u"foo_bar_baz"},
    {u"signedTransactionJWS", u"signed_transaction_jws"},
    {u"mixed_snakeCase", u"mixed_snake_case"},
    {u"fooBARBaz", u"foo_bar_baz"},
    {u"jwsRepresentation", u"jws_representation"},
    {u"Snake_Case", u"snake__case"},
    {u"kB", u"k_b"},
    {u"myURLProperty", u"my_url_property"},
    {u"serviceEnabled", u"service_enabled"},
    {u"tcp443Port", u"tcp443_port"},
    {u"urlString", u"url_string"},
    {u"dnsServers", u"dns_servers"},
    {u"With Space", u"with _space"},
    {u"URLString", u"u_rl_string"},
    {u"mtuValue", u"mtu_value"},
    {u"dot.Name", u"dot._name"},
    {u"isHTTPSEnabled", u"is_https_enabled"},
    {u"getX", u"get_x"},
    {u"ABc", u"a_bc"},
    {u"one2Three", u"one2_three"},
    {u"x", u"x"},
    {u"one2three", u"one2three"},
    {u"X1Y2", u"x1_y2"},
};

const Conversion capitalizedTexts[] = {
    {u"us-east", u"Us-East"},
    {u"mcDONALD", u"Mcdonald"},
    {u"i̇stanbul", u"İstanbul"},
    {u"new_york", u"New_York"},
    {u"foo.bar", u"Foo.Bar"},
    {u"İSTANBUL", u"İstanbul"},
    {u"o'neil", u"O'neil"},
    {u"foo/bar", u"Foo/Bar"},
    {u"usa2eu", u"Usa2Eu"},
    {u"o’neil", u"O’neil"},
    {u"a:b", u"A:B"},
    {u"hong kong (2)", u"Hong Kong (2)"},
    {u"EU west 1", u"Eu West 1"},
    {u"ǆ", u"ǅ"},
    {u"", u""},
    {u"são paulo", u"São Paulo"},
    {u"ﬁne", u"Fine"},
    {u"   ", u"   "},
    {u"ß", u"Ss"},
    {u"éCOLE", u"École"},
    {u"école", u"École"},
    {u"straße", u"Straße"},
    {u"don`t", u"Don`t"},
    {u"St. petersburg", u"St. Petersburg"},
    {u"2nd place", u"2Nd Place"},
    {u"x^y", u"X^y"},
    {u"frankfurt am main", u"Frankfurt Am Main"},
    {u"1st", u"1St"},
    {u"ΑΣΣ", u"Ασσ"},
    {u"côte d'ivoire", u"Côte D'ivoire"},
};

class FromSnakeCase : public testing::TestWithParam<Conversion>
{
};
class ToSnakeCase : public testing::TestWithParam<Conversion>
{
};
class Capitalized : public testing::TestWithParam<Conversion>
{
};

} // namespace

TEST_P(FromSnakeCase, convertsAsThePlatformDoes)
{
    EXPECT_EQ(keys::fromSnakeCase(QString::fromUtf16(GetParam().input)), QString::fromUtf16(GetParam().output));
}
INSTANTIATE_TEST_SUITE_P(Keys, FromSnakeCase, testing::ValuesIn(fromSnakeCase));

TEST_P(ToSnakeCase, convertsAsThePlatformDoes)
{
    EXPECT_EQ(keys::toSnakeCase(QString::fromUtf16(GetParam().input)), QString::fromUtf16(GetParam().output));
}
INSTANTIATE_TEST_SUITE_P(Keys, ToSnakeCase, testing::ValuesIn(toSnakeCase));

TEST_P(Capitalized, capitalizesAsThePlatformDoes)
{
    EXPECT_EQ(capitalized(QString::fromUtf16(GetParam().input)), QString::fromUtf16(GetParam().output));
}
INSTANTIATE_TEST_SUITE_P(Texts, Capitalized, testing::ValuesIn(capitalizedTexts));

TEST(WireKey, isComputedWhileCompiling)
{
    static_assert(keys::wireKey("signedTransactionJWS").view() == "signed_transaction_jws");
    static_assert(keys::wireKey("deviceName").view() == "device_name");
    static_assert(keys::wireKey("protocol").view() == "protocol");
    static_assert(keys::wireKey("assignedIpv6").view() == "assigned_ipv6");
    static_assert(keys::wireKey("isHTTPSEnabled").view() == "is_https_enabled");
    static_assert(keys::wireKey("").view().empty());
}

TEST(WireKey, knowsWhetherReadingConvertsItBack)
{
    static_assert(keys::readsBack("device_name", "deviceName"));
    static_assert(keys::readsBack("assigned_ipv6", "assignedIpv6"));
    static_assert(!keys::readsBack("signed_transaction_jws", "signedTransactionJWS"));
    static_assert(!keys::readsBack("device_nam", "deviceName"));
    static_assert(!keys::readsBack("device_names", "deviceName"));
}

} // namespace tarnwik::test
