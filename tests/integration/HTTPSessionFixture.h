#pragma once

#include "platform/qt/QtHTTPSession.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarnwik::test {

/// A session whose time stands still, and a server that answers as it is told.
class HTTPSessionFixture : public testing::Test
{
protected:
    static URL url(const QString &text) { return *URL::fromString(text); }

    HTTPRequest request(const QString &path = QStringLiteral("/a"), const QByteArray &method = "GET") const
    {
        return {url(m_server.origin() + path), method, {}, {}};
    }

    URLResponse send(const HTTPRequest &request, std::stop_token token = {})
    {
        return run(m_session->data(request, std::move(token)));
    }

    /// Sends \a request, which must fail; the code that it failed with.
    int failureOf(const HTTPRequest &request, std::stop_token token = {})
    {
        return failureOf(Running<URLResponse>(m_session->data(request, std::move(token))));
    }

    static int failureOf(Running<URLResponse> running)
    {
        try {
            running.result();
        } catch (const URLError &error) {
            return error.code();
        }
        return 0;
    }

    /// Runs the event loop until the server has received \a count requests.
    bool hasReceived(std::size_t count = 1)
    {
        return spinUntil([this, count] { return m_server.requests().size() >= count; });
    }

    ScriptedServer m_server;
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::unique_ptr<QtHTTPSession> m_session = std::make_unique<QtHTTPSession>(m_clock);
};

} // namespace tarnwik::test
