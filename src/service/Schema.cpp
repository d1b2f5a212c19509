#include "service/Schema.h"

#include "service/Seed.h"
#include "service/SubscriptionTables.h"

#include <sqlite3.h>

namespace tarnwik::service {

namespace {

/// Marks a database as this service's: "Trnw".
constexpr qint64 applicationId = 0x54726e77;
/// The version of the tables. One that changes them adds its step to upgradeTables(), so that a database of any version
/// before becomes one of this version.
constexpr qint64 schemaVersion = 2;

// Version 1. Times are in milliseconds since 1970, in UTC. A node keeps its tunnel as JSON: it is read as a whole and
// never searched.
constexpr char firstTables[] = R"sql(
CREATE TABLE settings (
    name TEXT PRIMARY KEY,
    value ANY NOT NULL
) STRICT, WITHOUT ROWID;

CREATE TABLE accounts (
    id INTEGER PRIMARY KEY,
    login TEXT NOT NULL UNIQUE,
    password_hash TEXT NOT NULL,
    email TEXT NOT NULL,
    role TEXT NOT NULL,
    status TEXT NOT NULL,
    subscription_status TEXT NOT NULL,
    service_enabled INTEGER NOT NULL,
    plan_gb INTEGER NOT NULL,
    quota_bytes INTEGER NOT NULL,
    used_bytes INTEGER NOT NULL,
    cycle_used_bytes INTEGER,
    cycle_quota_bytes INTEGER,
    monthly_price_cents INTEGER NOT NULL,
    billing_provider TEXT NOT NULL,
    billing_portal_url TEXT NOT NULL,
    billing_account_token TEXT,
    subscription_current_period_start TEXT,
    subscription_current_period_end TEXT,
    service_block_reason TEXT
) STRICT;

CREATE TABLE sessions (
    token_hash BLOB PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts,
    device_name TEXT NOT NULL,
    platform TEXT NOT NULL,
    created_at INTEGER NOT NULL
) STRICT, WITHOUT ROWID;
CREATE INDEX sessions_by_account ON sessions (account_id);

CREATE TABLE failed_sign_ins (
    login_hash BLOB NOT NULL,
    failed_at INTEGER NOT NULL
) STRICT;
CREATE INDEX failed_sign_ins_by_login ON failed_sign_ins (login_hash);

CREATE TABLE nodes (
    id INTEGER PRIMARY KEY,
    place INTEGER NOT NULL,
    name TEXT NOT NULL,
    provider TEXT NOT NULL,
    region TEXT NOT NULL,
    status TEXT NOT NULL,
    runtime TEXT NOT NULL,
    endpoint TEXT NOT NULL,
    awg_enabled INTEGER NOT NULL,
    has_ipv6 INTEGER NOT NULL,
    tunnel TEXT NOT NULL
) STRICT;

CREATE TABLE devices (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    account_id INTEGER NOT NULL REFERENCES accounts,
    name TEXT NOT NULL,
    platform TEXT NOT NULL,
    enabled INTEGER NOT NULL,
    public_key TEXT NOT NULL UNIQUE,
    last_selected_node_id INTEGER REFERENCES nodes
) STRICT;
CREATE INDEX devices_by_account ON devices (account_id);

CREATE TABLE profiles (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    device_id INTEGER NOT NULL REFERENCES devices,
    node_id INTEGER NOT NULL REFERENCES nodes,
    protocol TEXT NOT NULL,
    host_number INTEGER NOT NULL,
    preshared_key TEXT NOT NULL,
    enabled INTEGER NOT NULL,
    tunnel_running INTEGER,
    last_handshake_at INTEGER,
    rx_bytes INTEGER NOT NULL DEFAULT 0,
    tx_bytes INTEGER NOT NULL DEFAULT 0,
    counted_until INTEGER NOT NULL,
    UNIQUE (device_id, node_id),
    UNIQUE (node_id, host_number)
) STRICT;
)sql";

// Version 2: what the app store sells, which account each subscription belongs to, and the latest period of each account.
constexpr char subscriptionTables[] = R"sql(
CREATE TABLE subscription_products (
    product_id TEXT PRIMARY KEY,
    plan_gb INTEGER NOT NULL,
    monthly_price_cents INTEGER NOT NULL
) STRICT, WITHOUT ROWID;

CREATE TABLE subscriptions (
    original_transaction_id TEXT PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts
) STRICT, WITHOUT ROWID;

CREATE TABLE subscription_periods (
    account_id INTEGER PRIMARY KEY REFERENCES accounts,
    transaction_id TEXT NOT NULL,
    bought_at INTEGER NOT NULL
) STRICT;
)sql";

qint64 number(Database &database, const char *sql)
{
    Statement statement = database.prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

qint64 version(Database &database)
{
    return number(database, "PRAGMA user_version");
}

/// Marks \a database as this service's and of this version.
void sign(Database &database)
{
    database.runScript(qPrintable(
        QStringLiteral("PRAGMA application_id = %1; PRAGMA user_version = %2").arg(applicationId).arg(schemaVersion)));
}

} // namespace

bool isEmpty(Database &database)
{
    return number(database, "SELECT count(*) FROM sqlite_schema") == 0 && number(database, "PRAGMA application_id") == 0
        && version(database) == 0;
}

void checkOwner(Database &database)
{
    if (isEmpty(database))
        return;
    if (number(database, "PRAGMA application_id") != applicationId)
        throw ForeignDatabaseError(QStringLiteral("it belongs to another program"));
    if (version(database) < 1 || version(database) > schemaVersion)
        throw ForeignDatabaseError(QStringLiteral("it was made by another version of the service"));
    Statement check = database.prepare("PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != QLatin1String("ok"))
        throw DatabaseError(SQLITE_CORRUPT, QStringLiteral("the integrity check failed"));
}

void createTables(Database &database)
{
    database.runScript(firstTables);
    database.runScript(subscriptionTables);
    sign(database);
}

void upgradeTables(Database &database)
{
    if (version(database) < 2) {
        database.runScript(subscriptionTables);
        insertProducts(database, defaultSubscriptionProducts());
    }
    if (version(database) < schemaVersion)
        sign(database);
}

} // namespace tarnwik::service
