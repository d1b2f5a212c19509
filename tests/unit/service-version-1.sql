-- A database that version 1 of the service made and used, as SQL: the demo account with a session, a device, a profile
-- that carried something, and a failed sign-in.
PRAGMA journal_mode = WAL;
BEGIN;
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
CREATE TABLE failed_sign_ins (
    login_hash BLOB NOT NULL,
    failed_at INTEGER NOT NULL
) STRICT;
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
CREATE INDEX sessions_by_account ON sessions (account_id);
CREATE INDEX failed_sign_ins_by_login ON failed_sign_ins (login_hash);
CREATE INDEX devices_by_account ON devices (account_id);
INSERT INTO "settings" VALUES('decoy_password_hash','$argon2id$v=19$m=65536,t=2,p=1$+1YCSQGB5J1b9lZpoUSZjw$eVAKoJ/QFJTn+I+h6qyUDO5YqD/JUkrY0c9yEyLLXms');
INSERT INTO "settings" VALUES('usage_bytes_per_second',1500000);
INSERT INTO "accounts" VALUES(1,'demo@tarnwik.example','$argon2id$v=19$m=65536,t=2,p=1$YMKthCXcc1uxHCBLwoLdfA$EUsW4XSzpxO0wW26q8GCY/gGzmhX5Zmf9dwXl6Unuk0','demo@tarnwik.example','customer','active','active',1,200,214748364800,847100468,847100468,214748364800,799,'apple','https://billing.tarnwik.example/portal','9b1f6c1e-3d0a-4c57-8a55-6f0f3c6f7f21','2026-11-01T00:00:00Z','2026-12-01T00:00:00Z',NULL);
INSERT INTO "sessions" VALUES(X'48D2578E18F074E8D1371658E752AF3643F7755787F701E497B2FCB8E62E8ADF',1,'Desk','macos',1795271635361);
INSERT INTO "failed_sign_ins" VALUES(X'517D03964CA45F2BB73E0C162CD6CE6C83D308C8A8567192A339EDD4E3018D48',1795271636660);
INSERT INTO "nodes" VALUES(1,0,'Helsinki 1','Nordhall','Finland','online','container','192.0.2.11',1,1,'{"allowed_ips":["0.0.0.0/0","::/0"],"amneziawg":{"h1":1148335820,"h2":1903371119,"h3":2470916641,"h4":3315665075,"jc":4,"jmax":71,"jmin":41,"s1":22,"s2":93},"dns":["10.64.0.1","fd00:64::1"],"endpoint":"192.0.2.11:51820","ipv4_pool":"10.64.0.0/16","ipv6_pool":"fd00:64::/64","mtu":1420,"persistent_keepalive":25,"preshared_keys":true,"public_key":"spd7pDaS3vLpBvuPKrIMkDX+y9i85bsw/TXFoni3Jgg="}');
INSERT INTO "nodes" VALUES(2,1,'Rotterdam 1','Polderhost','Netherlands','online','container','192.0.2.12',1,1,'{"allowed_ips":["0.0.0.0/0","::/0"],"amneziawg":{"h1":1148343739,"h2":1903377726,"h3":2470921944,"h4":3315669876,"jc":5,"jmax":72,"jmin":42,"s1":29,"s2":98},"dns":["10.65.0.1","fd00:65::1"],"endpoint":"192.0.2.12:51820","ipv4_pool":"10.65.0.0/16","ipv6_pool":"fd00:65::/64","mtu":1420,"persistent_keepalive":25,"preshared_keys":true,"public_key":"/Nz+YH5Tzrk9EHM7xKUR0cbjmtaaAPDYBJpRcVDpsn8="}');
INSERT INTO "nodes" VALUES(3,2,'Zurich 1','Alpenrack','Switzerland','online','virtual-machine','192.0.2.13',1,0,'{"allowed_ips":["0.0.0.0/0"],"amneziawg":{"h1":1148351658,"h2":1903384333,"h3":2470927247,"h4":3315674677,"jc":6,"jmax":73,"jmin":43,"s1":36,"s2":103},"dns":["10.66.0.1"],"endpoint":"192.0.2.13:51820","ipv4_pool":"10.66.0.0/16","mtu":1420,"persistent_keepalive":25,"preshared_keys":true,"public_key":"5lNDiw3urSvcPpcrJXoZNsjH3hpZF+gCQWFIC4izphY="}');
INSERT INTO "nodes" VALUES(4,3,'Montreal 1','Laurentide','Canada','offline','container','192.0.2.14',1,1,'{"allowed_ips":["0.0.0.0/0","::/0"],"amneziawg":{"h1":1148359577,"h2":1903390940,"h3":2470932550,"h4":3315679478,"jc":7,"jmax":74,"jmin":44,"s1":43,"s2":108},"dns":["10.67.0.1","fd00:67::1"],"endpoint":"192.0.2.14:51820","ipv4_pool":"10.67.0.0/16","ipv6_pool":"fd00:67::/64","mtu":1420,"persistent_keepalive":25,"preshared_keys":true,"public_key":"zOpizSQNaM5mfdzFK+zi/DKHX5dCRlyc+Rg3sioxWD0="}');
INSERT INTO "nodes" VALUES(5,4,'Osaka 1','Kansai Metal','Japan','online','bare-metal','2001:db8:0:5::1',1,1,'{"allowed_ips":["0.0.0.0/0","::/0"],"amneziawg":{"h1":1148367496,"h2":1903397547,"h3":2470937853,"h4":3315684279,"jc":8,"jmax":75,"jmin":45,"s1":50,"s2":113},"dns":["10.68.0.1","fd00:68::1"],"endpoint":"[2001:db8:0:5::1]:51820","ipv4_pool":"10.68.0.0/16","ipv6_pool":"fd00:68::/64","mtu":1420,"persistent_keepalive":25,"preshared_keys":true,"public_key":"ioxtfncvZITJ8qGs3oijXRaB1pYf0/PsPOZXajC7+zk="}');
INSERT INTO "devices" VALUES(1,1,'macOS device','macos',1,'yzAhOCUe5/Hr0CkKF8eOaZeX8ehem2HzaN8w/RAAEFk=',3);
INSERT INTO "profiles" VALUES(1,1,3,'amneziawg',2,'PewbxJNfUy+kCZ1VstxYUPFywst8qQI4MC3oAytVPIQ=',1,NULL,1795271636672,1453200,363300,1795271636672);
INSERT INTO "sqlite_sequence" VALUES('devices',1);
INSERT INTO "sqlite_sequence" VALUES('profiles',1);
PRAGMA application_id = 1416785527;
PRAGMA user_version = 1;
COMMIT;
