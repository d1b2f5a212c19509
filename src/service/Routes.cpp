#include "service/Routes.h"

#include "service/ServiceError.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace tarnwik::service {

namespace {

struct Row
{
    const char *method;
    /// Behind the prefix. "#" stands for a number.
    const char *path;
    ServiceResponse (*operation)(const SessionCall &);
};

constexpr char prefix[] = "/api/customer/v1/";

// The whole API.
constexpr Row rows[] = {
    {"POST", "session", nullptr},
    {"GET", "session", readSession},
    {"DELETE", "session", endSession},
    {"GET", "nodes", listNodes},
    {"GET", "devices", listDevices},
    {"POST", "devices", createDevice},
    {"POST", "devices/#/node-profiles", createNodeProfile},
    {"GET", "device-profiles/#/tunnel-profile", readTunnelProfile},
    {"POST", "subscription/apple/transactions", syncAppleTransaction},
};

/// A number as it stands in a path: decimal digits, no sign, no leading zero. One that is too large is no one's, and so
/// are negative ones.
std::optional<qint64> pathNumber(QStringView text)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (text.isEmpty() || text.startsWith(u'0') || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return fits ? number : std::numeric_limits<qint64>::max();
}

/// The number in \a path if it matches \a pattern, or 0 if the pattern has none; nothing if it does not match.
std::optional<qint64> match(const QString &pattern, QStringView path)
{
    const qsizetype hash = pattern.indexOf(u'#');
    if (hash < 0)
        return path == pattern ? std::optional(qint64(0)) : std::nullopt;
    const QStringView head = QStringView(pattern).left(hash);
    const QStringView tail = QStringView(pattern).mid(hash + 1);
    if (path.size() < head.size() + tail.size() || !path.startsWith(head) || !path.endsWith(tail))
        return std::nullopt;
    return pathNumber(path.mid(head.size(), path.size() - head.size() - tail.size()));
}

} // namespace

Route findRoute(const ServiceRequest &request)
{
    if (!request.path.startsWith(QLatin1String(prefix)))
        throw ServiceError(404, "not_found");
    const auto path = QStringView(request.path).mid(qsizetype(sizeof prefix - 1));

    QByteArrayList allowed;
    for (const Row &row : rows) {
        const auto id = match(QString::fromLatin1(row.path), path);
        if (!id)
            continue;
        if (request.method == row.method)
            return {row.operation, *id};
        allowed.append(row.method);
    }
    if (allowed.isEmpty())
        throw ServiceError(404, "not_found");
    throw ServiceError(405, "method_not_allowed").with("Allow", allowed.join(", "));
}

} // namespace tarnwik::service
