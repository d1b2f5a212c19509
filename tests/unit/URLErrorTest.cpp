#include "platform/HTTPSession.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

struct Row
{
    URLError::Code code;
    int number;
    const char *text;
};

class URLErrorText : public testing::TestWithParam<Row>
{
};

TEST_P(URLErrorText, isThePlatforms)
{
    const URLError error(GetParam().code, QStringLiteral("vpn.example"));
    EXPECT_EQ(int(error.code()), GetParam().number);
    EXPECT_EQ(error.localizedDescription().toStdString(), GetParam().text);
    EXPECT_STREQ(error.what(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Every, URLErrorText,
    testing::Values(
        Row{URLError::Cancelled, -999, "cancelled"}, Row{URLError::BadURL, -1000, "bad URL"},
        Row{URLError::TimedOut, -1001, "The request timed out."},
        Row{URLError::UnsupportedURL, -1002, "unsupported URL"},
        Row{URLError::CannotFindHost, -1003, "A server with the specified hostname could not be found."},
        Row{URLError::CannotConnectToHost, -1004, "Could not connect to the server."},
        Row{URLError::NetworkConnectionLost, -1005, "The network connection was lost."},
        Row{URLError::HTTPTooManyRedirects, -1007, "too many HTTP redirects"},
        Row{URLError::NotConnectedToInternet, -1009, "The Internet connection appears to be offline."},
        Row{URLError::CannotParseResponse, -1017, "cannot parse response"},
        Row{URLError::AppTransportSecurityRequiresSecureConnection, -1022,
            "The resource could not be loaded because the App Transport Security policy requires the use of a secure "
            "connection."},
        Row{URLError::SecureConnectionFailed, -1200, "A TLS error caused the secure connection to fail."},
        Row{URLError::ServerCertificateUntrusted, -1202,
            "The certificate for this server is invalid. You might be connecting to a server that is pretending to be "
            "“vpn.example” which could put your confidential information at risk."}),
    [](const auto &info) { return "code" + std::to_string(-info.param.number); });

} // namespace

} // namespace tarnwik
