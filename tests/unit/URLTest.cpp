#include "platform/URL.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

namespace tarnwik {

namespace {

/// A text, and the URL that it spells.
struct Parsing
{
    const char *text;
    std::optional<const char *> url;
};

void PrintTo(const Parsing &row, std::ostream *stream)
{
    *stream << '"' << row.text << '"';
}

class URLFromString : public testing::TestWithParam<Parsing>
{
};

TEST_P(URLFromString, followsThePlatform)
{
    const auto url = URL::fromString(QString::fromUtf8(GetParam().text));
    ASSERT_EQ(url.has_value(), GetParam().url.has_value()) << (url ? url->absoluteString().toStdString() : "no URL");
    if (url)
        EXPECT_EQ(url->absoluteString().toStdString(), *GetParam().url);
}

/// A text that is a URL as it stands.
constexpr Parsing unchanged(const char *text)
{
    return {text, text};
}
constexpr Parsing changed(const char *text, const char *url)
{
    return {text, url};
}
constexpr Parsing none(const char *text)
{
    return {text, std::nullopt};
}

INSTANTIATE_TEST_SUITE_P(
    Every, URLFromString,
    testing::Values(none(""), changed(" ", "%20"), unchanged("https://x"), none(" https://x"), none("https://x "),
                    none("\thttps://x"), none("https://x\n"), changed("not a url", "not%20a%20url"),
                    unchanged("api.example.com"), unchanged("api.example.com:8443"), unchanged("localhost:8080/x"),
                    none("https://exa mple.com"), none("http://[::1"), unchanged("http://[::1]:80/"),
                    none("http://[::1]x"), unchanged("://"), unchanged("https://"), unchanged("https:"),
                    unchanged("https:/x"), unchanged("//x"), changed("https://münchen.de", "https://xn--mnchen-3ya.de"),
                    changed("https://例え.テスト/パス", "https://xn--r8jz45g.xn--zckzah/%E3%83%91%E3%82%B9"),
                    changed("%zz", "%25zz"), changed("https://h/%zz", "https://h/%25zz"),
                    changed("https://h/%2", "https://h/%252"), changed("https://h/a b", "https://h/a%20b"),
                    changed("https://h/a%20b c", "https://h/a%2520b%20c"),
                    changed("https://h/a?b c", "https://h/a?b%20c"), changed("https://h/a|b", "https://h/a%7Cb"),
                    changed("https://h/{id}", "https://h/%7Bid%7D"), changed("https://h/[x]", "https://h/%5Bx%5D"),
                    changed("https://h/a\\b", "https://h/a%5Cb"), changed("https://h/\"q\"", "https://h/%22q%22"),
                    changed("https://h/<x>", "https://h/%3Cx%3E"), changed("https://h/^", "https://h/%5E"),
                    changed("https://h/`", "https://h/%60"), none("https://h:port/"), unchanged("https://h:/"),
                    unchanged("https://h:99999/"), changed("https://user:pa ss@h/", "https://user:pa%20ss@h/"),
                    changed("https://h/a#b#c", "https://h/a#b%23c"), changed("https://h/é", "https://h/%C3%A9"),
                    none("1https://x"), none("ht tp://x"), unchanged("https//x"), unchanged("mailto:a@b"),
                    unchanged("?q=1"), unchanged("#f"), unchanged("https://foo_bar.com"), unchanged("https://-a.com"),
                    unchanged("https://a..b"), unchanged("https://EXAMPLE.com/A"),
                    changed("https://h/a ", "https://h/a%20")));

/// A base, the path that is appended, and what comes of it.
struct Appending
{
    const char *base;
    const char *path;
    const char *url;
};

void PrintTo(const Appending &row, std::ostream *stream)
{
    *stream << '"' << row.base << "\" + \"" << row.path << '"';
}

class URLAppendingPath : public testing::TestWithParam<Appending>
{
};

TEST_P(URLAppendingPath, followsThePlatform)
{
    const auto base = URL::fromString(QString::fromUtf8(GetParam().base));
    ASSERT_TRUE(base);
    const auto url = base->appendingPath(QString::fromUtf8(GetParam().path));
    EXPECT_EQ(url.absoluteString().toStdString(), GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    Every, URLAppendingPath,
    testing::Values(
        Appending{"https://h", "v1", "https://h/v1"}, Appending{"https://h", "/v1", "https://h/v1"},
        Appending{"https://h", "", "https://h/"}, Appending{"https://h/", "v1", "https://h/v1"},
        Appending{"https://h/", "/v1", "https://h/v1"}, Appending{"https://h/api", "v1", "https://h/api/v1"},
        Appending{"https://h/api", "/v1", "https://h/api/v1"}, Appending{"https://h/api/", "v1", "https://h/api/v1"},
        Appending{"https://h/api/", "/v1", "https://h/api/v1"}, Appending{"https://h/api", "v1/", "https://h/api/v1/"},
        Appending{"https://h/api", "a/b", "https://h/api/a/b"},
        Appending{"https://h/api", "../x", "https://h/api/../x"}, Appending{"https://h/api", "", "https://h/api/"},
        Appending{"https://h/p?x=1", "more", "https://h/p/more?x=1"},
        Appending{"https://h?q=1#f", "more", "https://h/more?q=1#f"},
        Appending{"https://h/a%20b", "c", "https://h/a%20b/c"}, Appending{"https://h/a", "?", "https://h/a/%3F"},
        Appending{"https://h/a", "b c", "https://h/a/b%20c"}, Appending{"https://h/a", "%2F", "https://h/a/%252F"},
        Appending{"https://h/a", "é", "https://h/a/%C3%A9"},
        Appending{"https://user:pw@h:8080/a", "b", "https://user:pw@h:8080/a/b"},
        Appending{"https://h", "/api/customer/v1/nodes", "https://h/api/customer/v1/nodes"},
        Appending{"https://h/", "/api/customer/v1/nodes", "https://h/api/customer/v1/nodes"},
        Appending{"https://h#f/x?y", "v1", "https://h/v1#f/x?y"},
        Appending{"http://[::1]:80", "v1", "http://[::1]:80/v1"}));

TEST(URL, isNoneWithHalfACharacter)
{
    EXPECT_EQ(URL::fromString(QStringLiteral("https://h") + QChar(0xD800) + QStringLiteral("x")), std::nullopt);
    EXPECT_EQ(URL::fromString(QString(QChar(0xDC00))), std::nullopt);
}

TEST(URL, isEqualWhereItsTextIs)
{
    const auto url = URL::fromString(QStringLiteral("https://h/a"));
    EXPECT_EQ(url, URL::fromString(QStringLiteral("https://h/a")));
    EXPECT_NE(url, URL::fromString(QStringLiteral("https://H/a")));
}

} // namespace

} // namespace tarnwik
