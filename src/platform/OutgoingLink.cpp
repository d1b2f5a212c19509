#include "platform/OutgoingLink.h"

namespace tarnwik {

namespace {

bool isWebAddress(const QUrl &url)
{
    return (url.scheme() == QStringLiteral("https") || url.scheme() == QStringLiteral("http")) && !url.host().isEmpty();
}

bool isMailAddress(const QUrl &url)
{
    return url.scheme() == QStringLiteral("mailto") && !url.path().isEmpty();
}

} // namespace

std::optional<QUrl> outgoingLink(const QString &url)
{
    QUrl address(url, QUrl::StrictMode);
    if (!address.isValid() || (!isWebAddress(address) && !isMailAddress(address)))
        return std::nullopt;
    return address;
}

} // namespace tarnwik
