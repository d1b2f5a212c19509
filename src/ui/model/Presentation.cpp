#include "ui/model/Presentation.h"

#include "api/Capitalized.h"
#include "platform/URL.h"
#include "ui/ByteFormatter.h"

#include <QStringList>

#include <algorithm>

namespace tarnwik::presentation {

namespace {

const QString separator = QStringLiteral(" \u00B7 ");

QString withBlanks(QString words)
{
    return words.replace(QLatin1Char('_'), QLatin1Char(' '));
}

} // namespace

QString nodeCaption(const ExitNode &node)
{
    return capitalized(node.region) + separator + node.name;
}

QString nodeDetail(const ExitNode &node)
{
    return QStringList({node.provider, node.region, node.endpoint}).join(separator);
}

QString runtimeLine(const ExitNode &node)
{
    return node.name + separator + withBlanks(node.runtime);
}

QString nodeStatusText(const ExitNode &node)
{
    return capitalized(node.status);
}

bool isOnline(const ExitNode &node)
{
    return node.status == QLatin1String("online");
}

QString deviceDetail(const CustomerDevice &device)
{
    const qsizetype count = device.profiles.size();
    const QString suffix = count == 1 ? QString() : QStringLiteral("s");
    return device.platform + separator + QString::number(count) + QStringLiteral(" profile") + suffix;
}

double usageFraction(const Account &account)
{
    if (account.quotaBytes < 1)
        return 0;
    return std::min(1.0, static_cast<double>(account.usedBytes) / static_cast<double>(account.quotaBytes));
}

QString usageCaption(const Account &account)
{
    return ByteFormatter::string(account.usedBytes) + QStringLiteral(" used of ") + planText(account);
}

QString usageMenuText(const Account &account)
{
    return ByteFormatter::string(account.usedBytes) + QStringLiteral(" of ") + planText(account);
}

QString accountStatusLine(const Account &account)
{
    return QStringLiteral("Account ") + account.status + separator + QStringLiteral("subscription ")
        + withBlanks(account.subscriptionStatus);
}

QString planText(const Account &account)
{
    return QString::number(account.planGb) + QStringLiteral(" GB");
}

QString billingProviderText(const Account &account)
{
    return account.billingProvider.isEmpty() ? QStringLiteral("Not connected") : account.billingProvider;
}

std::optional<QString> billingPortalURL(const Account &account)
{
    if (account.billingPortalUrl.isEmpty())
        return std::nullopt;
    const std::optional<URL> url = URL::fromString(account.billingPortalUrl);
    return url ? std::optional(url->absoluteString()) : std::nullopt;
}

} // namespace tarnwik::presentation
