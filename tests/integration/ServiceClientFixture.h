#pragma once

#include "api/JSON.h"
#include "api/TarnwikAPIClient.h"
#include "platform/qt/QtHTTPSession.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"
#include "support/RecordSamples.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The client over the real HTTP session, whose time stands still, towards a server that answers what it is told.
class ServiceClientFixture : public testing::Test
{
protected:
    TarnwikAPIClient clientAt(const QString &baseURL, std::optional<QString> token = text("abc"))
    {
        return TarnwikAPIClient(*URL::fromString(baseURL), std::move(token), m_session);
    }

    TarnwikAPIClient client(const char *path = "") { return clientAt(m_server.origin() + text(path)); }

    /// Runs \a task, which must fail with an error that has a text; that text.
    template<typename T>
    static std::string failureOf(Task<T> task)
    {
        return failureOf(Running<T>(std::move(task)));
    }

    template<typename T>
    static std::string failureOf(Running<T> running)
    {
        try {
            running.result();
        } catch (const LocalizedError &error) {
            return error.what();
        } catch (const APIErrorEnvelope &envelope) {
            return "envelope " + envelope.error.toStdString();
        }
        return "no failure";
    }

    bool hasReceived(std::size_t count = 1)
    {
        return spinUntil([this, count] { return m_server.requests().size() >= count; });
    }

    ScriptedServer m_server;
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::shared_ptr<HTTPSession> m_session = std::make_shared<QtHTTPSession>(m_clock);
};

} // namespace tarnwik::test
