#include "support/FakeHTTPSession.h"

#include <QUrl>

#include <algorithm>
#include <stdexcept>

namespace tarnwik::test {

QString FakeHTTPSession::Exchange::summary() const
{
    return QString::fromLatin1(request.method) + u' ' + QUrl(request.url.absoluteString()).path();
}

void FakeHTTPSession::Exchange::settle(Outcome outcome)
{
    m_outcome = std::move(outcome);
    m_gate.open();
}

void FakeHTTPSession::Exchange::answer(int status, const QByteArray &body)
{
    settle(URLResponse{status, body});
}

void FakeHTTPSession::Exchange::answerWithoutHTTP()
{
    settle(URLResponse{std::nullopt, "no HTTP"});
}

void FakeHTTPSession::Exchange::fail(URLError::Code code)
{
    settle(code);
}

Task<URLResponse> FakeHTTPSession::data(HTTPRequest request, std::stop_token token)
{
    const auto exchange = std::make_shared<Exchange>(std::move(request), token);
    exchanges.push_back(exchange);
    if (handler)
        handler(*exchange);
    try {
        co_await exchange->m_gate.wait(endsWhenStopped ? token : std::stop_token());
    } catch (const async::Cancelled &) {
        throw URLError(URLError::Cancelled);
    }
    if (const auto *code = std::get_if<URLError::Code>(&*exchange->m_outcome))
        throw URLError(*code);
    co_return std::get<URLResponse>(*exchange->m_outcome);
}

QStringList FakeHTTPSession::summaries() const
{
    QStringList result;
    for (const auto &exchange : exchanges)
        result << exchange->summary();
    return result;
}

FakeHTTPSession::Exchange *FakeHTTPSession::find(const QString &summary) const
{
    const auto found = std::find_if(exchanges.begin(), exchanges.end(), [&](const auto &exchange) {
        return exchange->isWaiting() && exchange->summary() == summary;
    });
    return found == exchanges.end() ? nullptr : found->get();
}

bool FakeHTTPSession::isWaiting(const QString &summary) const
{
    return find(summary) != nullptr;
}

FakeHTTPSession::Exchange &FakeHTTPSession::waiting(const QString &summary) const
{
    Exchange *exchange = find(summary);
    if (!exchange)
        throw std::runtime_error("no request waits: " + summary.toStdString());
    return *exchange;
}

} // namespace tarnwik::test
