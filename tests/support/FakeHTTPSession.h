#pragma once

#include "async/Gate.h"
#include "platform/HTTPSession.h"

#include <functional>
#include <memory>
#include <variant>
#include <vector>

namespace tarnwik::test {

/// An HTTP session whose every exchange the test answers when it likes, or at once through a handler.
class FakeHTTPSession final : public HTTPSession
{
public:
    /// One request under way.
    class Exchange
    {
    public:
        Exchange(HTTPRequest request, std::stop_token token)
            : request(std::move(request))
            , token(std::move(token))
        {
        }

        const HTTPRequest request;
        const std::stop_token token;

        /// "GET /path": what is asked for.
        QString summary() const;
        bool isWaiting() const { return !m_outcome && !token.stop_requested(); }

        void answer(int status, const QByteArray &body = {});
        void answerWithoutHTTP();
        void fail(URLError::Code code);

    private:
        friend class FakeHTTPSession;
        using Outcome = std::variant<URLResponse, URLError::Code>;

        void settle(Outcome outcome);

        std::optional<Outcome> m_outcome;
        async::Gate m_gate;
    };

    using Handler = std::function<void(Exchange &)>;

    /// Called for every exchange as it starts; it may answer or leave it waiting.
    Handler handler;
    /// Whether a pulled token ends an exchange at once, as it should. If not, the test ends it.
    bool endsWhenStopped = true;
    /// Every exchange so far.
    std::vector<std::shared_ptr<Exchange>> exchanges;

    Task<URLResponse> data(HTTPRequest request, std::stop_token token) override;

    /// The summaries of all requests so far.
    QStringList summaries() const;
    /// The first exchange of this summary that still waits. There must be one.
    Exchange &waiting(const QString &summary) const;
    bool isWaiting(const QString &summary) const;

private:
    Exchange *find(const QString &summary) const;
};

} // namespace tarnwik::test
