#include "service/NodeTables.h"

#include "api/JSON.h"

namespace tarnwik::service {

namespace {

// The columns that nodeOf() reads.
#define NODE_COLUMNS "id, name, provider, region, status, runtime, endpoint, awg_enabled, has_ipv6"
constexpr int columnBehindNode = 9;

ExitNode nodeOf(const Statement &row)
{
    return {.id = row.integer(0),
            .name = row.text(1),
            .provider = row.text(2),
            .region = row.text(3),
            .status = row.text(4),
            .runtime = row.text(5),
            .endpoint = row.text(6),
            .awgEnabled = row.boolean(7),
            .hasIpv6 = row.boolean(8)};
}

} // namespace

QList<ExitNode> readNodes(Database &database)
{
    Statement row = database.prepare("SELECT " NODE_COLUMNS " FROM nodes ORDER BY place");
    QList<ExitNode> nodes;
    while (row.step())
        nodes.append(nodeOf(row));
    return nodes;
}

std::optional<SeedNode> findNode(Database &database, qint64 id)
{
    Statement row = database.prepare("SELECT " NODE_COLUMNS ", tunnel FROM nodes WHERE id = ?", id);
    if (!row.step())
        return std::nullopt;
    return SeedNode{nodeOf(row), decode<NodeTunnel>(row.text(columnBehindNode).toUtf8())};
}

} // namespace tarnwik::service
