#pragma once

#include "platform/LocalizedError.h"
#include "service/SeedRecords.h"

#include <QByteArray>

namespace tarnwik::service {

/// A seed that cannot be used. The text names the place in it, such as "nodes[2].tunnel.mtu".
class SeedError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// The usage rate of a seed that names none, in bytes a second.
inline constexpr qint64 defaultUsageBytesPerSecond = 250'000;

/// The products of a seed that names none, and of databases that were made before there were products.
QList<SubscriptionProduct> defaultSubscriptionProducts();

/// Reads and checks a seed in JSON. Throws SeedError.
Seed parseSeed(const QByteArray &json);

/// Reads and checks the seed in a file. Throws SeedError, whose text names the file too.
Seed readSeedFile(const QString &path);

/// The seed inside the program: one account, demo@tarnwik.example with the password "demo", and five nodes.
Seed builtInSeed();

} // namespace tarnwik::service
