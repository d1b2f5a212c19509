#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace tarnwik::service {

/// A request as it came, whatever brought it.
struct ServiceRequest
{
    /// In capitals.
    QByteArray method;
    /// Percent-decoded, without the query.
    QString path;
    /// The value of each header, or empty.
    QByteArray authorization;
    QByteArray contentType;
    QByteArray body;
};

/// The answer to a request.
struct ServiceResponse
{
    int status = 200;
    /// JSON, or empty for status 204.
    QByteArray body;
    /// What goes with it besides "Content-Type: application/json".
    QList<std::pair<QByteArray, QByteArray>> headers;
};

/// The most that a request's body may hold, in bytes. The largest one that clients send is a signed transaction.
inline constexpr qsizetype largestBody = qsizetype(64) * 1024;

} // namespace tarnwik::service
