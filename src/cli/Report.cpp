#include "cli/Report.h"

#include "api/JSON.h"
#include "cli/Terminal.h"
#include "cli/TunnelWait.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace tarnwik::cli {

namespace {

using Row = QStringList;

/// \a rows in columns, two blanks between them.
QString table(const QList<Row> &rows)
{
    QList<qsizetype> widths;
    for (const Row &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (qsizetype column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    }
    QStringList lines;
    for (const Row &row : rows) {
        QString line;
        for (qsizetype column = 0; column < row.size(); ++column)
            line += row[column].leftJustified(widths[column] + 2);
        while (line.endsWith(u' '))
            line.chop(1);
        lines << line;
    }
    return lines.join(u'\n');
}

QString bytes(qint64 count)
{
    return QLocale::c().formattedDataSize(count, 1, QLocale::DataSizeTraditionalFormat);
}

QString usage(const Account &account)
{
    return QStringLiteral("%1 of %2 used").arg(bytes(account.usedBytes), bytes(account.quotaBytes));
}

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString cell(const QString &text)
{
    return plainText(text);
}

QString nodeName(const AppModel &model)
{
    const auto node = model.selectedNode();
    return node ? cell(node->name) : QStringLiteral("none");
}

std::optional<QString> displayPrice(const AppStoreSubscriptionStore &store, AppStoreSubscriptionPlan plan)
{
    const auto product = store.product(plan);
    return product ? std::optional(product->displayPrice) : std::nullopt;
}

QString subscriptionState(const AppStoreSubscriptionStore &store, AppStoreSubscriptionPlan plan)
{
    if (store.isActive(plan))
        return QStringLiteral("active");
    return store.product(plan) ? QStringLiteral("not active") : QStringLiteral("unavailable");
}

} // namespace

QString statusText(const AppModel &model)
{
    const VPNController &tunnel = *model.vpnController();
    QList<Row> rows{{QStringLiteral("Tunnel"), tunnel.statusLabel()}};
    // Not the selected node: that is what the next connect would use.
    if (const auto node = tunnel.configuredNode(); node && !isDown(tunnel.status()))
        rows << Row{QStringLiteral("Through"), cell(node->name)};
    rows << Row{QStringLiteral("Server"), cell(model.serverURLString())};
    const auto account = model.account();
    rows << Row{QStringLiteral("Account"),
                account                  ? cell(account->email)
                    : model.isSignedIn() ? QStringLiteral("signed in")
                                         : QStringLiteral("not signed in")};
    if (account)
        rows << Row{QStringLiteral("Usage"), usage(*account)};
    if (model.isSignedIn())
        rows << Row{QStringLiteral("Selected node"), nodeName(model)};
    return table(rows);
}

QJsonObject statusJSON(const AppModel &model)
{
    const auto account = model.account();
    const auto node = model.selectedNode();
    return {
        {QStringLiteral("signed_in"), model.isSignedIn()},
        {QStringLiteral("server_url"), model.serverURLString()},
        {QStringLiteral("vpn"),
         QJsonObject{{QStringLiteral("status"), int(model.vpnController()->status())},
                     {QStringLiteral("label"), model.vpnController()->statusLabel()}}},
        {QStringLiteral("account"), account ? QJsonValue(toJSON(*account)) : QJsonValue()},
        {QStringLiteral("selected_node"), node ? QJsonValue(toJSON(*node)) : QJsonValue()},
    };
}

QString accountText(const Account &account)
{
    const auto monthlyPrice = QLocale::c().toString(double(account.monthlyPriceCents) / 100, 'f', 2);
    QList<Row> rows{
        {QStringLiteral("E-mail"), cell(account.email)},
        {QStringLiteral("Status"), cell(account.status)},
        {QStringLiteral("Service"), account.serviceEnabled ? QStringLiteral("enabled") : QStringLiteral("disabled")},
        {QStringLiteral("Plan"), QStringLiteral("%1 GB").arg(account.planGb)},
        {QStringLiteral("Usage"), usage(account)},
        {QStringLiteral("Subscription"), cell(account.subscriptionStatus)},
        {QStringLiteral("Monthly price"), QStringLiteral("$%1").arg(monthlyPrice)},
        {QStringLiteral("Billing provider"), cell(account.billingProvider)},
    };
    if (account.subscriptionCurrentPeriodEnd)
        rows << Row{QStringLiteral("Period ends"), cell(*account.subscriptionCurrentPeriodEnd)};
    if (account.serviceBlockReason)
        rows << Row{QStringLiteral("Blocked"), cell(*account.serviceBlockReason)};
    return table(rows);
}

QString nodesText(const AppModel &model)
{
    QList<Row> rows{{QString(), QStringLiteral("ID"), QStringLiteral("NAME"), QStringLiteral("REGION"),
                     QStringLiteral("STATUS"), QStringLiteral("IPV6")}};
    const auto selected = model.selectedNode();
    for (const ExitNode &node : model.nodes()) {
        rows << Row{selected == node ? QStringLiteral("*") : QString(),
                    QString::number(node.id),
                    cell(node.name),
                    cell(node.region),
                    cell(node.status),
                    yesOrNo(node.hasIpv6)};
    }
    return table(rows);
}

QJsonArray nodesJSON(const AppModel &model)
{
    const auto selected = model.selectedNode();
    QJsonArray list;
    for (const ExitNode &node : model.nodes()) {
        QJsonObject object = toJSON(node);
        object.insert(QStringLiteral("selected"), selected == node);
        list.append(object);
    }
    return list;
}

QString devicesText(const AppModel &model)
{
    QList<Row> rows{{QStringLiteral("ID"), QStringLiteral("NAME"), QStringLiteral("PLATFORM"),
                     QStringLiteral("ENABLED"), QStringLiteral("PROFILES")}};
    for (const CustomerDevice &device : model.devices()) {
        QStringList profiles;
        for (const DeviceProfile &profile : device.profiles)
            profiles << QStringLiteral("%1 (%2)").arg(cell(profile.nodeName), cell(profile.assignedIp));
        rows << Row{QString::number(device.id), cell(device.name), cell(device.platform), yesOrNo(device.enabled),
                    profiles.join(QStringLiteral(", "))};
    }
    return table(rows);
}

QJsonArray devicesJSON(const AppModel &model)
{
    QJsonArray list;
    for (const CustomerDevice &device : model.devices())
        list.append(toJSON(device));
    return list;
}

QString subscriptionsText(const AppStoreSubscriptionStore &store)
{
    QList<Row> rows{{QStringLiteral("PLAN"), QStringLiteral("PRICE"), QStringLiteral("STATE")}};
    for (const AppStoreSubscriptionPlan plan : AppStoreSubscriptionPlan::allCases)
        rows << Row{plan.title(), cell(plan.priceLine(displayPrice(store, plan))), subscriptionState(store, plan)};
    return table(rows);
}

QJsonArray subscriptionsJSON(const AppStoreSubscriptionStore &store)
{
    QJsonArray list;
    for (const AppStoreSubscriptionPlan plan : AppStoreSubscriptionPlan::allCases) {
        const auto price = displayPrice(store, plan);
        list.append(QJsonObject{
            {QStringLiteral("plan"), plan.rawValue()},
            {QStringLiteral("product_id"), plan.productID()},
            {QStringLiteral("title"), plan.title()},
            {QStringLiteral("price_line"), plan.priceLine(price)},
            {QStringLiteral("display_price"), price ? QJsonValue(*price) : QJsonValue()},
            {QStringLiteral("is_active"), store.isActive(plan)},
            {QStringLiteral("is_available"), store.product(plan).has_value()},
        });
    }
    return list;
}

QString watchText(const AppModel &model)
{
    const auto account = model.account();
    const QString label = model.vpnController()->statusLabel();
    return account ? QStringLiteral("%1, %2").arg(label, usage(*account)) : label;
}

} // namespace tarnwik::cli
