#pragma once

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace tarnwik::service {

/// A tarnwik-service of the test's own, ended with the object.
class ServiceProcess
{
public:
    explicit ServiceProcess(const QStringList &arguments = {})
    {
        m_process.start(QStringLiteral(TARNWIK_SERVICE_PROGRAM), arguments);
    }

    ~ServiceProcess()
    {
        if (m_process.state() != QProcess::NotRunning)
            m_process.kill();
        m_process.waitForFinished();
    }

    /// Waits for the line that tells that the service is ready; its URL, or nothing.
    QString waitForOrigin()
    {
        test::spinUntil([this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; });
        const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
        const QString head = QStringLiteral("Listening on ");
        m_origin = line.startsWith(head) ? line.mid(head.size()) : QString();
        return m_origin;
    }

    /// Waits for the end of the process; its exit status, or nothing if it did not exit by itself.
    std::optional<int> waitForExit()
    {
        test::spinUntil([this] { return m_process.state() == QProcess::NotRunning; });
        if (m_process.state() != QProcess::NotRunning || m_process.exitStatus() != QProcess::NormalExit)
            return std::nullopt;
        return m_process.exitCode();
    }

    QProcess &process() { return m_process; }
    std::string errorText() { return m_process.readAllStandardError().toStdString(); }

    struct Answer
    {
        int status = 0;
        QJsonObject body;
        QByteArray bytes;
        QByteArray contentType;
    };

    /// Sends a request and waits for its answer; status 0 when there is none.
    Answer send(const QByteArray &method, const QString &path, const QByteArray &body = {},
                const QByteArray &token = {})
    {
        QNetworkRequest request(QUrl(m_origin + path));
        if (!body.isEmpty())
            request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/json"));
        if (!token.isEmpty())
            request.setRawHeader("Authorization", "Bearer " + token);
        const std::unique_ptr<QNetworkReply> reply(m_network.sendCustomRequest(request, method, body));
        QObject::connect(reply.get(), &QNetworkReply::sslErrors, reply.get(), [&] { reply->ignoreSslErrors(); });
        test::spinUntil([&] { return reply->isFinished(); });
        const QByteArray bytes = reply->readAll();
        return {.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                .body = QJsonDocument::fromJson(bytes).object(),
                .bytes = bytes,
                .contentType = reply->rawHeader("Content-Type")};
    }

    Answer trySignIn()
    {
        return send("POST", QStringLiteral("/api/customer/v1/session"),
                    R"({"email":"demo@tarnwik.example","password":"demo","device_name":"Desk","platform":"macos"})");
    }

    /// Signs the demo account in.
    QByteArray signIn() { return trySignIn().body.value(QLatin1String("token")).toString().toLatin1(); }

private:
    QProcess m_process;
    QString m_origin;
    QNetworkAccessManager m_network;
};

} // namespace tarnwik::service
