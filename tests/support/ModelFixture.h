#pragma once

#include "api/JSON.h"
#include "core/AppModel.h"
#include "support/EventLoop.h"
#include "support/RecordSamples.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// A model over a platform of stand-ins, and a server that answers with samples unless the test says otherwise.
class ModelTest : public testing::Test
{
protected:
    ModelTest()
    {
        m_platform.httpSession->handler = [this](FakeHTTPSession::Exchange &exchange) { serve(exchange); };
    }

    /// What the server answers to a request, by its summary. Requests without an answer wait.
    QMap<QString, std::pair<int, QByteArray>> m_answers{
        {text("POST /api/customer/v1/session"), {200, sampleJSON<SessionResponse>()}},
        {text("GET /api/customer/v1/session"), {200, sampleJSON<AccountResponse>()}},
        {text("DELETE /api/customer/v1/session"), {204, {}}},
        {text("GET /api/customer/v1/nodes"), {200, nodes({5, 9})}},
        {text("GET /api/customer/v1/devices"), {200, devices({})}},
    };
    const QString m_getAccount = text("GET /api/customer/v1/session");
    const QString m_getNodes = text("GET /api/customer/v1/nodes");
    const QString m_getDevices = text("GET /api/customer/v1/devices");
    const QString m_postSession = text("POST /api/customer/v1/session");
    const QString m_deleteSession = text("DELETE /api/customer/v1/session");
    const QString m_postDevice = text("POST /api/customer/v1/devices");

    static QByteArray nodes(const QList<int> &ids)
    {
        QByteArrayList list;
        for (const int id : ids)
            list << QByteArray(nodeJSON).replace("\"id\":3", "\"id\":" + QByteArray::number(id));
        return "{\"nodes\":[" + list.join(',') + "]}";
    }

    static QByteArray device(int id, const QByteArray &platform)
    {
        return "{\"id\":" + QByteArray::number(id) + R"(,"name":"n","platform":")" + platform
            + R"(","enabled":true,"public_key":"k","profiles":[]})";
    }

    static QByteArray devices(const QByteArrayList &list) { return "{\"devices\":[" + list.join(',') + "]}"; }

    void storeSession(const char *server = "https://stored.example", const char *token = "stored-token")
    {
        m_platform.userDefaults->strings = {{text("TarnwikServerURL"), text(server)},
                                            {text("TarnwikAuthToken"), text(token)}};
    }

    QByteArray lastAuthorization() const
    {
        for (const auto &[name, value] : m_platform.httpSession->exchanges.back()->request.headers) {
            if (name == "Authorization")
                return value;
        }
        return "none";
    }

    QString lastURL() const { return m_platform.httpSession->exchanges.back()->request.url.absoluteString(); }
    QStringList requests() const { return m_platform.httpSession->summaries(); }
    void forgetRequests() { m_platform.httpSession->exchanges.clear(); }

    TestPlatform m_platform;

private:
    void serve(FakeHTTPSession::Exchange &exchange)
    {
        if (const auto found = m_answers.find(exchange.summary()); found != m_answers.end())
            exchange.answer(found->first, found->second);
    }
};

} // namespace tarnwik::test
