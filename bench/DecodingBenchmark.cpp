// Reading a list of 10,000 exit nodes: into records, and by QJsonDocument alone on the same bytes.

#include "api/JSON.h"
#include "api/Models.h"

#include <QJsonDocument>

#include <benchmark/benchmark.h>

namespace {

using namespace tarnwik;

/// The list as a server would send it, each node with a name of its own.
QByteArray tenThousandNodes()
{
    NodeListResponse list;
    for (int i = 1; i <= 10'000; ++i) {
        ExitNode node;
        node.id = i;
        node.name = QStringLiteral("Reykjavík %1").arg(i);
        node.provider = QStringLiteral("Northern Hosting");
        node.region = QStringLiteral("Iceland");
        node.status = QStringLiteral("online");
        node.runtime = QStringLiteral("container");
        node.endpoint = QStringLiteral("192.0.2.%1:51820").arg(i % 256);
        node.awgEnabled = true;
        node.hasIpv6 = i % 2 == 0;
        list.nodes.append(node);
    }
    return encode(list);
}

void decodeIntoRecords(benchmark::State &state)
{
    const QByteArray json = tenThousandNodes();
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(decode<NodeListResponse>(json));
    state.SetBytesProcessed(state.iterations() * json.size());
}

void parseWithQJsonDocument(benchmark::State &state)
{
    const QByteArray json = tenThousandNodes();
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(json));
    state.SetBytesProcessed(state.iterations() * json.size());
}

} // namespace

BENCHMARK(decodeIntoRecords)->Unit(benchmark::kMillisecond);
BENCHMARK(parseWithQJsonDocument)->Unit(benchmark::kMillisecond);
