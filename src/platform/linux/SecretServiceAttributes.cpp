#include "platform/linux/SecretServiceAttributes.h"

namespace tarnwik {

namespace {

constexpr const char *serviceAttribute = "service";
constexpr const char *accountAttribute = "account";
constexpr const char *accessGroupAttribute = "access_group";

void insert(GHashTable *attributes, const char *name, const QString &value)
{
    g_hash_table_insert(attributes, g_strdup(name), g_strdup(value.toUtf8().constData()));
}

} // namespace

const SecretSchema *keychainSchema()
{
    // Items are found by their attributes alone, whatever schema the program that stored them gave them.
    static const SecretSchema schema = {
        "example.tarnwik.client.Key",
        SECRET_SCHEMA_DONT_MATCH_NAME,
        {
            {serviceAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING},
            {accountAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING},
            {accessGroupAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING},
        },
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
    };
    return &schema;
}

GLibPointer<GHashTable> attributesOfQuery(const KeychainQuery &query)
{
    GLibPointer<GHashTable> attributes(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
    insert(attributes.get(), serviceAttribute, query.service);
    insert(attributes.get(), accountAttribute, query.account);
    if (query.accessGroup) {
        insert(attributes.get(), accessGroupAttribute, *query.accessGroup);
    }
    return attributes;
}

bool isOfGroup(SecretItem *item, const KeychainQuery &query)
{
    if (query.accessGroup) {
        return true;
    }
    const GLibPointer<GHashTable> attributes(secret_item_get_attributes(item));
    return g_hash_table_contains(attributes.get(), accessGroupAttribute) == FALSE;
}

} // namespace tarnwik
