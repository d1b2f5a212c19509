#include "platform/linux/SecretServiceSession.h"

#include "platform/linux/SecretServiceAttributes.h"
#include "platform/linux/SecretServiceError.h"
#include "platform/linux/SecretServicePrompt.h"

#include <cstring>

namespace tarnwik {

namespace {

constexpr const char *secretsPath = "/org/freedesktop/secrets";
constexpr const char *serviceInterface = "org.freedesktop.Secret.Service";

// What a person sees in the keyring's own program.
constexpr const char *itemLabel = "Tarnwik device key";
// The name by which other programs create the keyring when they are the first to need it.
constexpr const char *collectionLabel = "Default keyring";

// The path by which the service says that there is no prompt, or no object.
bool isNone(const char *path)
{
    return std::strcmp(path, "/") == 0;
}

// Takes the error that a call may have left.
void throwIfFailed(GError *error)
{
    if (error != nullptr) {
        throw SecretServiceError(*GLibPointer<GError>(error));
    }
}

template<typename Proxy>
const char *pathOf(const GObjectPointer<Proxy> &proxy)
{
    return g_dbus_proxy_get_object_path(G_DBUS_PROXY(proxy.get()));
}

} // namespace

SecretServiceSession::SecretServiceSession(std::chrono::milliseconds limit, SecretServiceRefusal &refusal)
    : m_loop(limit)
    , m_bus(m_loop)
    , m_refusal(refusal)
{
    const auto result = m_loop.resultOf([](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer data) {
        secret_service_open(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_NONE, cancellable, callback, data);
    });
    GError *error = nullptr;
    m_service.reset(secret_service_open_finish(result.get(), &error));
    throwIfFailed(error);
}

SecretServiceSession::Items SecretServiceSession::itemsNow(GHashTable *attributes)
{
    const auto result = m_loop.resultOf([&](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer data) {
        secret_service_search(m_service.get(), keychainSchema(), attributes, SECRET_SEARCH_ALL, cancellable, callback,
                              data);
    });
    GError *error = nullptr;
    const GLibPointer<GList> list(secret_service_search_finish(m_service.get(), result.get(), &error));
    Items items;
    for (const GList *link = list.get(); link != nullptr; link = link->next) {
        items.emplace_back(SECRET_ITEM(link->data));
    }
    throwIfFailed(error);
    return items;
}

SecretServiceSession::Items SecretServiceSession::search(GHashTable *attributes)
{
    Items items = itemsNow(attributes);
    if (items.empty()) {
        // Some services show nothing of a locked keyring, so only an unlocked one proves that there is no such item.
        const auto collection = defaultCollection();
        if (collection != nullptr && secret_collection_get_locked(collection.get()) != FALSE) {
            unlock(pathOf(collection));
            items = itemsNow(attributes);
        }
    }
    return items;
}

void SecretServiceSession::unlock(SecretItem *item)
{
    if (secret_item_get_locked(item) != FALSE) {
        unlock(g_dbus_proxy_get_object_path(G_DBUS_PROXY(item)));
    }
}

void SecretServiceSession::unlock(const char *path)
{
    if (const auto status = m_refusal.status()) {
        throw SecretServiceError(*status);
    }
    const auto answer = m_bus.call(secretsName, secretsPath, serviceInterface, "Unlock",
                                   g_variant_new("(@ao)", g_variant_new_objv(&path, 1)), "(aoo)");
    const char *prompt = nullptr;
    g_variant_get_child(answer.get(), 1, "&o", &prompt);
    if (isNone(prompt)) {
        return;
    }
    try {
        askPerson(m_bus, prompt);
    } catch (const SecretServiceError &error) {
        // A service that went away in the middle was refused nothing: the next one is asked.
        if (error.status() == errSecUserCanceled || error.status() == errSecInteractionNotAllowed) {
            m_refusal.remember(error.status());
        }
        throw;
    }
}

QByteArray SecretServiceSession::dataOf(SecretItem *item)
{
    const auto result = m_loop.resultOf([&](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer data) {
        secret_item_load_secret(item, cancellable, callback, data);
    });
    GError *error = nullptr;
    secret_item_load_secret_finish(item, result.get(), &error);
    throwIfFailed(error);

    const GLibPointer<SecretValue> value(secret_item_get_secret(item));
    if (value == nullptr) {
        throw SecretServiceError(errSecDecode);
    }
    gsize size = 0;
    const char *bytes = secret_value_get(value.get(), &size);
    return QByteArray(bytes, static_cast<qsizetype>(size));
}

void SecretServiceSession::remove(SecretItem *item)
{
    const auto answer = m_bus.call(secretsName, g_dbus_proxy_get_object_path(G_DBUS_PROXY(item)),
                                   "org.freedesktop.Secret.Item", "Delete", nullptr, "(o)");
    const char *prompt = nullptr;
    g_variant_get(answer.get(), "(&o)", &prompt);
    if (!isNone(prompt)) {
        askPerson(m_bus, prompt);
    }
}

void SecretServiceSession::openDefaultCollection()
{
    const auto collection = defaultCollection();
    if (collection == nullptr) {
        createDefaultCollection();
    } else if (secret_collection_get_locked(collection.get()) != FALSE) {
        unlock(pathOf(collection));
    }
}

void SecretServiceSession::create(GHashTable *attributes, const QByteArray &data)
{
    const auto collection = defaultCollection();
    if (collection == nullptr) {
        throw SecretServiceError(errSecIO);
    }
    const GLibPointer<SecretValue> value(secret_value_new(data.constData(), data.size(), "application/octet-stream"));
    const auto result = m_loop.resultOf([&](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer slot) {
        secret_item_create(collection.get(), keychainSchema(), attributes, itemLabel, value.get(),
                           SECRET_ITEM_CREATE_NONE, cancellable, callback, slot);
    });
    GError *error = nullptr;
    const GObjectPointer<SecretItem> item(secret_item_create_finish(result.get(), &error));
    throwIfFailed(error);
}

GObjectPointer<SecretCollection> SecretServiceSession::defaultCollection()
{
    const auto result = m_loop.resultOf([&](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer data) {
        secret_collection_for_alias(m_service.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancellable,
                                    callback, data);
    });
    GError *error = nullptr;
    GObjectPointer<SecretCollection> collection(secret_collection_for_alias_finish(result.get(), &error));
    throwIfFailed(error);
    return collection;
}

void SecretServiceSession::createDefaultCollection()
{
    // Not through libsecret, whose own call never returns when the person closes the question for a password.
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Collection.Label",
                          g_variant_new_string(collectionLabel));
    const auto answer = m_bus.call(secretsName, secretsPath, serviceInterface, "CreateCollection",
                                   g_variant_new("(a{sv}s)", &properties, SECRET_COLLECTION_DEFAULT), "(oo)");
    const char *prompt = nullptr;
    g_variant_get_child(answer.get(), 1, "&o", &prompt);
    if (!isNone(prompt)) {
        askPerson(m_bus, prompt);
    }
}

} // namespace tarnwik
